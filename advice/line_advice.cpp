#include <algorithm>
#include <cstdint>
#include <optional>

#include "advice/advice_finders.h"
#include "model/value_bounds.h"

namespace zentro {

namespace {

std::optional<std::int32_t> ValueOf(const LineElement& element) {
    if (!element.IsConstant()) return std::nullopt;
    return NumberOf(element.constant->value);
}

/// Whether the last value of the line is a number beyond the largest.
bool IsLastAbove(const AdviceSearch& search, const SourceLine& line, std::int32_t largest) {
    const auto elements = search.compilation.ElementsOf(line);
    return !elements.empty() && ValueOf(elements.back()).value_or(0) > largest;
}

bool IsAssignedToItself(const AdviceSearch& search, const SourceLine& line) {
    const auto elements = search.compilation.ElementsOf(line);
    return line.purpose == Purpose::Assignment && elements.size() == 2 &&
           elements[0].location == elements[1].location;
}

/// What an operand can be.
struct Range {
    std::int32_t low = 0;
    std::int32_t high = 0;
};

Range RangeOf(const LineElement& element) {
    constexpr std::int32_t kLargestByte = 255;
    constexpr std::int32_t kLargestWord = 65535;
    if (const auto value = ValueOf(element)) return {*value, *value};
    const bool isByte = element.type == DataType::Byte || element.type == DataType::Flag;
    return {0, isByte ? kLargestByte : kLargestWord};
}

/// Whether the first is always less than the second, or never; nothing: it depends.
std::optional<bool> IsLess(Range first, Range second) {
    if (first.high < second.low) return true;
    if (first.low >= second.high) return false;
    return std::nullopt;
}

std::optional<bool> Not(std::optional<bool> holds) {
    if (holds) holds = !*holds;
    return holds;
}

std::optional<bool> IsEqual(Range first, Range second) {
    if (first.high < second.low || second.high < first.low) return false;
    return std::nullopt;
}

/// What comes of a comparison whatever the variables hold; nothing: it depends.
std::optional<bool> OutcomeOf(Token comparison, Range first, Range second) {
    switch (comparison) {
        case Token::Less: return IsLess(first, second);
        case Token::Greater: return IsLess(second, first);
        case Token::LessOrEqual:
        case Token::EqualOrLess: return Not(IsLess(second, first));
        case Token::GreaterOrEqual:
        case Token::EqualOrGreater: return Not(IsLess(first, second));
        case Token::Equal: return IsEqual(first, second);
        case Token::NotEqual:
        case Token::GreaterOrLess: return Not(IsEqual(first, second));
        default: return std::nullopt;
    }
}

/// The same of a variable with itself.
std::optional<bool> OutcomeWithItself(Token comparison) {
    const Range any{0, 0};
    if (comparison == Token::Equal) return true;
    if (comparison == Token::NotEqual || comparison == Token::GreaterOrLess) return false;
    return OutcomeOf(comparison, any, any);
}

bool IsEquality(Token comparison) {
    return comparison == Token::Equal || comparison == Token::NotEqual ||
           comparison == Token::GreaterOrLess;
}

bool IsConditionLine(Token token) {
    return token == Token::If || token == Token::While || token == Token::Until;
}

/// Whether the line may give the variable something.
bool MayChange(const SourceLine& line, const LineElement& element) {
    return element.use == ElementUse::Written || line.token == Token::Increment ||
           line.token == Token::Decrement || line.token == Token::DefineRoutine;
}

bool IsFlagConstant(const LineElement& element) {
    const auto value = ValueOf(element);
    return value && (*value == kFlagTrue || *value == kFlagFalse);
}

}  // namespace

void LineAdvice::Look(const SourceLine& line) {
    constexpr std::int32_t kFullSpeed = 100;
    constexpr std::int32_t kWidestAngle = 90;
    switch (line.token) {
        case Token::DefineEvent: isInEvent_ = true; break;
        case Token::EndEvent: isInEvent_ = false; break;
        case Token::Wait:
            if (isInEvent_) search_.Add(line, MessageCode::WaitInHandler);
            break;
        case Token::SetMotor:
            if (IsLastAbove(search_, line, kFullSpeed))
                search_.Add(line, MessageCode::SpeedAboveFull);
            break;
        case Token::SetServo:
            if (IsLastAbove(search_, line, kWidestAngle))
                search_.Add(line, MessageCode::AngleTooWide);
            break;
        case Token::SetServoPercent:
            if (IsLastAbove(search_, line, kFullSpeed))
                search_.Add(line, MessageCode::AngleTooWide);
            break;
        case Token::Equal:
            if (IsAssignedToItself(search_, line))
                search_.Add(line, MessageCode::AssignedToItself,
                            search_.compilation.ElementsOf(line)[0].Name());
            break;
        default:
            if (IsConditionLine(line.token)) LookAtComparison(line);
    }
}

void LineAdvice::LookAtComparison(const SourceLine& line) {
    const auto elements = search_.compilation.ElementsOf(line);
    const bool isComparison =
        elements.size() == 3 && elements[1].elementClass == ElementClass::Comparison;
    if (!isComparison) return;
    const LineElement& first = elements[0];
    const LineElement& second = elements[2];
    // Of two constants: WHILE 1 = 1 is meant.
    if (first.IsConstant() && second.IsConstant()) return;
    const Token comparison = elements[1].comparison;
    const bool isWithItself = first.location == second.location;
    const auto outcome = isWithItself ? OutcomeWithItself(comparison)
                                      : OutcomeOf(comparison, RangeOf(first), RangeOf(second));
    if (outcome)
        return search_.Add(line, *outcome ? MessageCode::AlwaysTrue : MessageCode::NeverTrue);
    const LineElement& variable = first.IsConstant() ? second : first;
    const LineElement& other = first.IsConstant() ? first : second;
    if (IsEquality(comparison) && ValueOf(other) == 1)
        comparedWithOne_.push_back({&line, &variable});
}

/// Whether all that the variable ever gets is 255 or 0, and from a button or a digital input.
bool LineAdvice::HoldsButton(const LineElement& variable) const {
    const Compilation& compilation = search_.compilation;
    bool isRead = false;
    for (const SourceLine& line : compilation.sourceLines) {
        const auto elements = compilation.ElementsOf(line);
        const bool isChanged = std::ranges::any_of(elements, [&](const LineElement& element) {
            return element.location == variable.location && MayChange(line, element);
        });
        if (!isChanged) continue;
        const bool isInput = line.token == Token::Button || line.token == Token::Digital;
        const bool isFlag =
            line.token == Token::Equal && elements.size() == 2 && IsFlagConstant(elements[1]);
        if (!isInput && !isFlag) return false;
        isRead = isRead || isInput;
    }
    const auto& symbols = compilation.symbols.Symbols();
    const auto symbol = std::ranges::find_if(
        symbols, [&](const Symbol& one) { return &one.label == variable.location; });
    if (symbol == symbols.end()) return false;
    const auto atFirst = NumberOf(symbol->defaultValue);
    return isRead && (!symbol->IsDefaulted() || atFirst == kFlagTrue || atFirst == kFlagFalse);
}

void LineAdvice::Finish() {
    for (const auto& [line, variable] : comparedWithOne_) {
        if (HoldsButton(*variable))
            search_.Add(*line, MessageCode::ButtonComparedWithOne, variable->Name());
    }
}

}  // namespace zentro
