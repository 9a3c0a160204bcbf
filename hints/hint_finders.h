#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "hints/other_languages.h"
#include "model/compilation.h"

namespace zentro {

/// What a hint is wanted for.
struct HintQuestion {
    const Compilation& compilation;
    std::span<const OtherLanguageRow> otherLanguages;
    MessageCode code;
    const SourceLine& line;
    std::string_view extra;  ///< what the message shows before its text
};

// Each finds one kind of cause, and nothing where its pattern does not fit.

/// Signs of other languages: ==, //, +=
std::optional<Hint> FindForeignSign(const HintQuestion& question);
/// Words of other languages: print, else if
std::optional<Hint> FindForeignWord(const HintQuestion& question);
/// 0.5 and 1,5; -1; 1OO; what is too large
std::optional<Hint> FindNumberHint(const HintQuestion& question);
/// Times, notes and speeds that are written in another measure.
std::optional<Hint> FindMeasureHint(const HintQuestion& question);
/// SET LED 1, ON; LED LEFT ON; SET LEDS LEFT, ON: one of two lights, which are set together.
std::optional<Hint> FindOneLight(const HintQuestion& question);
/// ADD 5 TO Speed, SET Speed TO 5: a variable that gets a value, in the words of other languages.
std::optional<Hint> FindSentence(const HintQuestion& question);
/// 60 = Speed, Speed 60, Speed = 60 percent: lines that give a variable a value, in another form.
std::optional<Hint> FindAssignedValue(const HintQuestion& question);
/// IF BUTTON 1 IS PRESSED THEN, WAIT FOR BUTTON 1: what is asked in everyday words.
std::optional<Hint> FindConditionInWords(const HintQuestion& question);
/// TURN LEFT 90, SET BOTH MOTORS, MOTOR 1, FORWARD, 60: what is said to a robot in everyday words.
std::optional<Hint> FindEverydayLine(const HintQuestion& question);
/// SET LEDS ON AND OFF, CASE 2 TO 4: values with something else than commas between them.
std::optional<Hint> FindListOfValues(const HintQuestion& question);
/// Values in another order, one too few, or nearly one of a list.
std::optional<Hint> FindChoiceHint(const HintQuestion& question);
/// Blocks as other languages write them, with the lines to write.
std::optional<Hint> FindRewrittenBlock(const HintQuestion& question);
/// Tables, pointers and statements where a number is wanted.
std::optional<Hint> FindOtherThing(const HintQuestion& question);
/// Words of statements, names and values that are nearly right.
std::optional<Hint> FindNearSpelling(const HintQuestion& question);
/// Too many or too few values, parentheses that do not belong there, a missing word.
std::optional<Hint> FindValuesHint(const HintQuestion& question);
/// Where a line goes on in another way than its statement, comparison or sum does.
std::optional<Hint> FindShapeHint(const HintQuestion& question);
/// Values of another kind than the one needed, and names that cannot be.
std::optional<Hint> FindKindHint(const HintQuestion& question);
/// Two statements on a line, more words than a value has, missing commas.
std::optional<Hint> FindExtraWords(const HintQuestion& question);
/// IF ANALOG(1) > 50 THEN: a call where only a value may stand.
std::optional<Hint> FindCallInside(const HintQuestion& question);
/// Calls of routines, events and functions that are written in another way.
std::optional<Hint> FindCallHint(const HintQuestion& question);
/// DEFINE lines, and names that need one.
std::optional<Hint> FindDefinitionHint(const HintQuestion& question);
/// The first line that has to run, in a program that does not begin.
std::optional<Hint> FindFirstToRun(const HintQuestion& question);
/// The block that is open where another one ends.
std::optional<Hint> FindOpenBlock(const HintQuestion& question);

}  // namespace zentro
