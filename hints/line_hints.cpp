#include "hints/line_hints.h"

#include <array>
#include <utility>

#include "hints/hint_finders.h"

namespace zentro {

namespace {

using Finder = std::optional<Hint> (*)(const HintQuestion&);

/// The more certain ones first.
constexpr std::array kFinders{
    FindOpenBlock,      FindConditionInWords, FindRewrittenBlock, FindMeasureHint,
    FindOneLight,       FindAssignedValue,    FindSentence,       FindListOfValues,
    FindEverydayLine,   FindForeignSign,      FindForeignWord,    FindNumberHint,
    FindExtraWords,     FindChoiceHint,       FindNearSpelling,   FindValuesHint,
    FindCallInside,     FindCallHint,         FindOtherThing,     FindKindHint,
    FindDefinitionHint, FindShapeHint};

/// Nobody has typed a longer line by hand.
constexpr std::size_t kLongestLine = 200;

}  // namespace

Hint LineHints::HintFor(MessageCode code, const SourceLine& line, std::string_view extra) {
    if (line.text.size() > kLongestLine) return {};
    if (!rows_) rows_ = OtherLanguageRows(compilation_.configuration.messages);
    const HintQuestion question{compilation_, *rows_, code, line, extra};
    for (const Finder find : kFinders) {
        std::optional<Hint> hint = find(question);
        if (!hint || hint->text.empty()) continue;
        const bool isRepeated = &line == lastLine_ && hint->text == lastText_;
        if (isRepeated) return {};
        lastLine_ = &line;
        lastText_ = hint->text;
        if (hint->fix) hint->fix->kind = hint->kind;
        return std::move(*hint);
    }
    return {};
}

Hint LineHints::HintForProgram(MessageCode code) {
    const SourceLine none;
    const HintQuestion question{compilation_, {}, code, none, {}};
    return FindFirstToRun(question).value_or(Hint{});
}

}  // namespace zentro
