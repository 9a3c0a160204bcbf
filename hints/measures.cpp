#include <algorithm>
#include <array>
#include <cmath>

#include "config/encoding.h"
#include "config/text.h"
#include "frontend/words.h"
#include "hints/hint_finders.h"
#include "hints/hint_text.h"
#include "hints/typed_values.h"

namespace zentro {

namespace {

constexpr std::int32_t kLargestWritten = 32767;

/// A unit of time, and how many hundredths of a second 1000 of it are.
struct TimeUnit {
    std::string_view word;
    std::int64_t hundredths = 0;
};

constexpr std::int64_t kSecond = 100'000;
constexpr std::int64_t kMillisecond = 100;
constexpr std::int64_t kMinute = 6'000'000;

/// A fraction without a unit can only be meant in seconds.
constexpr std::array kTimeUnits{
    TimeUnit{"", kSecond},
    TimeUnit{"s", kSecond},
    TimeUnit{"sec", kSecond},
    TimeUnit{"secs", kSecond},
    TimeUnit{"second", kSecond},
    TimeUnit{"seconds", kSecond},
    TimeUnit{"ms", kMillisecond},
    TimeUnit{"msec", kMillisecond},
    TimeUnit{"millisecond", kMillisecond},
    TimeUnit{"milliseconds", kMillisecond},
    TimeUnit{"min", kMinute},
    TimeUnit{"minute", kMinute},
    TimeUnit{"minutes", kMinute},
};

/// The number in thousandths; nothing when it is none, or too long to be meant.
std::optional<std::int64_t> Thousandths(std::string_view text) {
    constexpr std::size_t kMostDigits = 6;
    constexpr std::size_t kMostDecimals = 3;
    const std::size_t point = std::min(text.find_first_of(".,"), text.size());
    const std::string_view whole = text.substr(0, point);
    const std::string_view decimals = text.substr(std::min(point + 1, text.size()));
    const bool areDigits =
        std::ranges::all_of(whole, IsDigit) && std::ranges::all_of(decimals, IsDigit);
    if (!areDigits || whole.size() > kMostDigits || decimals.size() > kMostDecimals ||
        (whole.empty() && decimals.empty()))
        return std::nullopt;
    std::int64_t number = 0;
    for (const char digit : whole)
        number = number * 10 + (digit - '0');
    for (std::size_t i = 0; i < kMostDecimals; ++i)
        number = number * 10 + (i < decimals.size() ? decimals[i] - '0' : 0);
    return number;
}

/// The words before a unit that stand for a number.
struct WordedNumber {
    std::size_t length = 0;  ///< 0: there are none
    std::int64_t thousandths = 0;
};

WordedNumber NumberInWords(std::string_view typed) {
    constexpr std::array<std::pair<std::string_view, std::int64_t>, 5> kNumbers{
        {{"HALF A ", 500}, {"A ", 1000}, {"ONE ", 1000}, {"TWO ", 2000}, {"THREE ", 3000}}};
    for (const auto& [words, thousandths] : kNumbers) {
        if (StartsWithIgnoreCase(typed, words)) return {words.size(), thousandths};
    }
    return {};
}

/// WAIT 1.5, WAIT 2 seconds, WAIT half a second
std::optional<Hint> FindTime(const HintQuestion& question) {
    const bool isAsked = question.code == MessageCode::UnknownName ||
                         question.code == MessageCode::WrongArgumentCount;
    const std::vector<std::string_view> values = TypedValues(question);
    const bool isSound = question.line.token == Token::PlaySound && values.size() == 2 &&
                         question.code == MessageCode::UnknownName &&
                         EqualsIgnoreCase(question.extra, values[1]);
    if (!isAsked || (question.line.token != Token::Wait && !isSound)) return std::nullopt;
    const std::string_view typed = isSound ? values[1] : TypedPart(question);
    const WordedNumber worded = NumberInWords(typed);
    const std::size_t end = worded.length > 0
                                ? worded.length
                                : std::min(typed.find_first_not_of("0123456789.,"), typed.size());
    const std::string_view unit = TrimBlanks(typed.substr(end));
    const auto* row = std::ranges::find_if(
        kTimeUnits, [&](const TimeUnit& one) { return EqualsIgnoreCase(one.word, unit); });
    const auto number =
        worded.length > 0 ? std::optional(worded.thousandths) : Thousandths(typed.substr(0, end));
    if (row == kTimeUnits.end() || !number) return std::nullopt;
    constexpr std::int64_t kThousandths = 1'000'000;
    const std::int64_t hundredths = *number * row->hundredths / kThousandths;
    if (hundredths < 1 || hundredths > kLargestWritten) return std::nullopt;
    const std::string instead = std::to_string(hundredths);
    if (isSound) return RewritePiece(question, typed, instead);
    Hint hint = RewritePiece(question, typed, instead);
    hint.text = MakeHint(question, MessageCode::HundredthsShown, {ToUtf8(typed), instead}).text;
    return hint;
}

/// C is 60 where no octave is written, as C4 is; nothing when the text is no note.
std::optional<int> NoteNumber(std::string_view text) {
    constexpr std::array kKeys{9, 11, 0, 2, 4, 5, 7};  // of A to G in an octave
    constexpr int kNotes = 12;
    constexpr int kUsualOctave = 4;
    const std::string_view sign = text.substr(std::min<std::size_t>(1, text.size()), 1);
    const bool isSharp = sign == "#";
    const bool isFlat = sign == "b";
    const std::string_view octave =
        text.substr(std::min<std::size_t>(isSharp || isFlat ? 2 : 1, text.size()));
    const bool isNote = !text.empty() && FoldCase(text.front()) >= 'A' &&
                        FoldCase(text.front()) <= 'G' && octave.size() <= 1 &&
                        std::ranges::all_of(octave, IsDigit);
    if (!isNote) return std::nullopt;
    const int key = kKeys.at(static_cast<std::size_t>(FoldCase(text.front()) - 'A'));
    const int number = octave.empty() ? kUsualOctave : octave.front() - '0';
    return (number + 1) * kNotes + key + (isSharp ? 1 : 0) - (isFlat ? 1 : 0);
}

/// What is too large for a note can be meant in hertz: 440 is the A above the C in the middle.
std::optional<int> NoteOfFrequency(std::int32_t hertz) {
    constexpr std::int32_t kLargestNote = 127;
    constexpr std::int32_t kHighest = 12'500;
    constexpr double kNotes = 12;
    constexpr double kStandard = 440;
    constexpr int kStandardNote = 69;
    if (hertz <= kLargestNote || hertz > kHighest) return std::nullopt;
    return kStandardNote + static_cast<int>(std::lround(kNotes * std::log2(hertz / kStandard)));
}

/// PLAY TUNE 60, 50
std::optional<Hint> FindSoundAsTune(const HintQuestion& question) {
    const std::vector<std::string_view> values = TypedValues(question);
    const bool isSound = question.line.token == Token::PlayTune && values.size() == 2 &&
                         ParseNumber(values[0]) && ParseNumber(values[1]);
    if (!isSound) return std::nullopt;
    const std::string_view tune = question.compilation.GetCommandText(Token::PlayTune);
    return RewritePiece(question, StatementOf(question.line).substr(0, tune.size()),
                        std::string(question.compilation.GetCommandText(Token::PlaySound)));
}

/// PLAY SOUND C4, 50
std::optional<Hint> FindNote(const HintQuestion& question) {
    if (question.line.token != Token::PlaySound) return std::nullopt;
    const std::vector<std::string_view> values = TypedValues(question);
    const bool isAsked = question.code == MessageCode::UnknownName ||
                         question.code == MessageCode::ValueOutOfRange ||
                         question.code == MessageCode::TypeMismatch;
    if (!isAsked || values.empty()) return std::nullopt;
    const std::string_view typed = values.front();
    const auto note =
        ParseNumber(typed) ? NoteOfFrequency(*ParseNumber(typed)) : NoteNumber(StripQuotes(typed));
    if (!note) return std::nullopt;
    const std::string number = std::to_string(*note);
    Hint hint = RewritePiece(question, typed, number);
    hint.text = MakeHint(question, MessageCode::NoteShown, {ToUtf8(typed), number}).text;
    return hint;
}

/// SET MOTOR 2, FORWARD, -60
std::optional<Hint> FindOtherWay(const HintQuestion& question) {
    const Token token = question.line.token;
    const bool turns =
        token == Token::SetMotor || token == Token::SetServo || token == Token::SetServoPercent;
    const std::vector<std::string_view> values = TypedValues(question);
    constexpr std::size_t kValues = 3;
    if (!turns || values.size() != kValues || !values[2].starts_with('-')) return std::nullopt;
    const std::string_view number = TrimBlanks(values[2].substr(1));
    const std::string direction = ValueBehind(question, values[1]);
    const bool isKnown = direction == "F" || direction == "B";
    if (!isKnown || !ParseNumber(number)) return std::nullopt;
    const std::string opposite = NameOfValue(question, direction == "F" ? "B" : "F");
    std::string instead(question.compilation.GetCommandText(token));
    instead.append(" ").append(values[0]).append(", ").append(opposite).append(", ").append(number);
    Hint hint = RewriteStatement(question, instead);
    hint.text = MakeHint(question, MessageCode::OtherWayShown, {ToUtf8(instead)}).text;
    return hint;
}

}  // namespace

std::optional<Hint> FindMeasureHint(const HintQuestion& question) {
    for (const auto find : {FindTime, FindSoundAsTune, FindNote, FindOtherWay}) {
        if (std::optional<Hint> hint = find(question)) return hint;
    }
    return std::nullopt;
}

}  // namespace zentro
