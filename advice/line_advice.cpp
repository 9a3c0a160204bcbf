#include <algorithm>
#include <cstdint>
#include <optional>

#include "advice/advice_finders.h"
#include "advice/line_values.h"
#include "model/statement.h"
#include "model/value_bounds.h"

namespace zentro {

namespace {

/// Whether the last value of the line is a number beyond the largest that can be meant.
bool IsLastAbove(const AdviceSearch& search, const SourceLine& line) {
    const auto elements = search.compilation.ElementsOf(line);
    const Statement* statement = FindValueStatement(line.token);
    if (elements.empty() || statement == nullptr) return false;
    const std::int32_t most = statement->Values().back().mostMeant;
    return most > 0 && ValueOf(elements.back()).value_or(0) > most;
}

bool IsWaitForNothing(const AdviceSearch& search, const SourceLine& line) {
    const auto elements = search.compilation.ElementsOf(line);
    return !elements.empty() && ValueOf(elements.front()) == 0;
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

bool IsFlagConstant(const LineElement& element) {
    const auto value = ValueOf(element);
    return value && (*value == kFlagTrue || *value == kFlagFalse);
}

}  // namespace

void LineAdvice::Look(const SourceLine& line) {
    switch (line.token) {
        case Token::DefineEvent: isInEvent_ = true; break;
        case Token::EndEvent: isInEvent_ = false; break;
        case Token::Wait:
            if (isInEvent_) search_.Add(line, MessageCode::WaitInHandler);
            if (IsWaitForNothing(search_, line)) search_.Add(line, MessageCode::PauseTooShort);
            break;
        case Token::SetMotor:
            if (IsLastAbove(search_, line)) search_.Add(line, MessageCode::SpeedAboveFull);
            LookAtSpeed(line);
            break;
        case Token::SetServo:
        case Token::SetServoPercent:
            if (IsLastAbove(search_, line)) search_.Add(line, MessageCode::AngleTooWide);
            break;
        case Token::Equal:
            if (IsAssignedToItself(search_, line))
                search_.Add(line, MessageCode::AssignedToItself,
                            search_.uses.NameOf(search_.compilation.ElementsOf(line)[0]));
            break;
        default:
            if (IsConditionLine(line.token)) LookAtComparison(line);
    }
}

void LineAdvice::LookAtComparison(const SourceLine& line) {
    const auto sides = SidesOf(search_.compilation, line);
    if (!sides) return;
    const LineElement& first = *sides->first;
    const LineElement& second = *sides->second;
    // Of two constants: WHILE 1 = 1 is meant.
    if (first.IsConstant() && second.IsConstant()) return;
    const Token comparison = sides->comparison;
    const bool isWithItself = first.location == second.location;
    const auto outcome = isWithItself ? OutcomeWithItself(comparison)
                                      : OutcomeOf(comparison, RangeOf(first), RangeOf(second));
    if (outcome)
        return search_.Add(line, *outcome ? MessageCode::AlwaysTrue : MessageCode::NeverTrue);
    const auto compared = WithNumber(*sides);
    if (compared && compared->number == 1 && IsEquality(comparison))
        comparedWithOne_.push_back({&line, compared->variable});
}

/// Whether all that the variable ever gets is 255 or 0, and from a button or a digital input.
bool LineAdvice::HoldsButton(const LineElement& variable) const {
    const Compilation& compilation = search_.compilation;
    bool isRead = false;
    for (const VariableUses::Change& change : search_.uses.ChangesOf(variable.location)) {
        const SourceLine& line = *change.line;
        const auto elements = compilation.ElementsOf(line);
        const bool isInput = line.token == Token::Button || line.token == Token::Digital;
        const bool isFlag =
            line.token == Token::Equal && elements.size() == 2 && IsFlagConstant(elements[1]);
        if (!isInput && !isFlag) return false;
        isRead = isRead || isInput;
    }
    const Symbol* symbol = search_.uses.SymbolOf(variable.location);
    if (symbol == nullptr) return false;
    const auto atFirst = NumberOf(symbol->defaultValue);
    return isRead && (!symbol->IsDefaulted() || atFirst == kFlagTrue || atFirst == kFlagFalse);
}

void LineAdvice::LookAtSpeed(const SourceLine& line) {
    const auto elements = search_.compilation.ElementsOf(line);
    if (elements.empty() || elements.back().IsConstant()) return;
    const LineElement& speed = elements.back();
    if (HoldsJoystick(speed))
        search_.Add(line, MessageCode::JoystickTooLarge, search_.uses.NameOf(speed));
}

/// Whether all that the variable ever gets is a joystick's, and no line asks how much that is.
bool LineAdvice::HoldsJoystick(const LineElement& variable) const {
    const Compilation& compilation = search_.compilation;
    const auto changes = search_.uses.ChangesOf(variable.location);
    const auto isJoystick = [](const VariableUses::Change& change) {
        return change.line->token == Token::Joystick || change.line->token == Token::Stick;
    };
    if (changes.empty() || !std::ranges::all_of(changes, isJoystick)) return false;
    return std::ranges::none_of(compilation.sourceLines, [&](const SourceLine& line) {
        if (!IsConditionLine(line.token) && line.token != Token::Select) return false;
        const auto elements = compilation.ElementsOf(line);
        return std::ranges::any_of(elements, [&](const LineElement& element) {
            return element.location == variable.location;
        });
    });
}

void LineAdvice::Finish() {
    for (const auto& [line, variable] : comparedWithOne_) {
        if (HoldsButton(*variable))
            search_.Add(*line, MessageCode::ButtonComparedWithOne, search_.uses.NameOf(*variable));
    }
}

}  // namespace zentro
