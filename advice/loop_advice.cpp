#include <algorithm>
#include <cstdint>
#include <optional>
#include <vector>

#include "advice/advice_finders.h"
#include "advice/line_values.h"
#include "model/value_bounds.h"

namespace zentro {

namespace {

/// What one line adds to a variable each time: 10 in Speed = Speed + 10; below 0 when it takes off.
std::optional<std::int32_t> StepOf(const Compilation& compilation, const SourceLine& line) {
    if (line.token == Token::Increment) return 1;
    if (line.token == Token::Decrement) return -1;
    const auto elements = compilation.ElementsOf(line);
    const bool isSum = line.token == Token::Plus || line.token == Token::Minus;
    if (!isSum || elements.size() != 3) return std::nullopt;
    const LineElement& target = elements[0];
    const bool isTurned = line.token == Token::Plus && elements[1].IsConstant();
    const LineElement& from = isTurned ? elements[2] : elements[1];
    const auto step = ValueOf(isTurned ? elements[1] : elements[2]);
    if (!step || from.location != target.location) return std::nullopt;
    return line.token == Token::Plus ? *step : -*step;
}

/// How a variable gets its values: it begins with one of some, and goes on in steps of one size.
struct Steps {
    std::vector<std::int32_t> starts{};
    std::int32_t size = 0;  ///< 0: no line steps
};

/// Nothing for variables that get anything else.
std::optional<Steps> StepsOf(const AdviceSearch& search, const Label* variable) {
    const Symbol* symbol = search.uses.SymbolOf(variable);
    if (symbol == nullptr || !symbol->IsDefaulted()) return std::nullopt;
    const auto atFirst = NumberOf(symbol->defaultValue);
    if (!atFirst) return std::nullopt;
    Steps steps{{*atFirst}};
    for (const VariableUses::Change& change : search.uses.ChangesOf(variable)) {
        if (const auto number = NumberAssigned(search.compilation, *change.line)) {
            steps.starts.push_back(*number);
            continue;
        }
        const auto step = StepOf(search.compilation, *change.line);
        if (!step || steps.size != 0) return std::nullopt;
        steps.size = *step;
    }
    return steps;
}

/// Whether the steps lead beyond the number from wherever they begin, and never to it.
bool StepOver(const Steps& steps, std::int32_t number) {
    if (steps.size == 0) return false;
    return std::ranges::all_of(steps.starts, [&](std::int32_t start) {
        const std::int32_t way = number - start;
        const bool isAhead = (way > 0) == (steps.size > 0) && way != 0;
        return isAhead && way % steps.size != 0;
    });
}

bool IsLoop(Token token) {
    return token == Token::Loop || token == Token::While || token == Token::Repeat;
}

/// Whether the loop is one that is meant to go on for ever: WHILE Running = TRUE, where nothing in
/// the whole program changes Running.
bool IsMeantEndless(const AdviceSearch& search, const SourceLine& condition,
                    const ComparedSides& sides) {
    const auto compared = WithNumber(sides);
    if (!compared || !search.uses.ChangesOf(compared->variable->location).empty()) return false;
    return condition.token == Token::While &&
           (compared->variable->type == DataType::Flag || sides.comparison == Token::Equal);
}

}  // namespace

void LoopAdvice::Look(const SourceLine& line) {
    LookAtSteps(line);
    LookAtCount(line);
    const BlockRole role = search_.role;
    if (role == BlockRole::Opens) blocks_.push_back({&line});
    if (role != BlockRole::Ends || blocks_.empty()) return;
    LookAtLoop(*blocks_.back().first, line);
    blocks_.pop_back();
}

void LoopAdvice::LookAtLoop(const SourceLine& first, const SourceLine& last) {
    const SourceLine& condition = first.token == Token::While ? first : last;
    const auto sides = SidesOf(search_.compilation, condition);
    if (!sides) return;
    const auto mayChange = [&](const LineElement& side) {
        return !side.IsConstant() && search_.uses.MayChangeWithin(side.location, first, last);
    };
    if (sides->first->IsConstant() && sides->second->IsConstant()) return;
    if (mayChange(*sides->first) || mayChange(*sides->second)) return;
    if (search_.uses.MayBeLeftWithin(first, last)) return;
    if (IsMeantEndless(search_, condition, *sides)) return;
    const LineElement& variable = sides->first->IsConstant() ? *sides->second : *sides->first;
    search_.Add(condition, MessageCode::WaitsForNothing, search_.uses.NameOf(variable));
}

void LoopAdvice::LookAtSteps(const SourceLine& line) {
    const auto sides = SidesOf(search_.compilation, line);
    if (!sides || !IsEquality(sides->comparison)) return;
    const auto compared = WithNumber(*sides);
    if (!compared) return;
    const auto steps = StepsOf(search_, compared->variable->location);
    if (steps && StepOver(*steps, compared->number))
        search_.Add(line, MessageCode::SteppedOver, search_.uses.NameOf(*compared->variable));
}

/// Count = 0 and INCREMENT Count below it in the same round of the same loop.
void LoopAdvice::LookAtCount(const SourceLine& line) {
    if (blocks_.empty()) return;
    if (NumberAssigned(search_.compilation, line) == 0) {
        blocks_.back().setToZero.push_back(&line);
        return;
    }
    if (StepOf(search_.compilation, line) != 1) return;
    const auto loop = std::find_if(blocks_.rbegin(), blocks_.rend(),
                                   [](const Block& block) { return IsLoop(block.first->token); });
    if (loop == blocks_.rend()) return;
    const LineElement& counted = search_.compilation.ElementsOf(line)[0];
    if (!IsCountedOnlyHere(counted)) return;
    for (const SourceLine* start : loop->setToZero) {
        if (search_.compilation.ElementsOf(*start)[0].location == counted.location)
            search_.Add(*start, MessageCode::CountBeginsAnew, search_.uses.NameOf(counted));
    }
}

/// Whether two lines change the variable, and others only show it or compare it with 2 and more: so
/// it is no sign that something has happened, which may be 0 or 1.
bool LoopAdvice::IsCountedOnlyHere(const LineElement& variable) const {
    const Compilation& compilation = search_.compilation;
    if (search_.uses.ChangesOf(variable.location).size() != 2) return false;
    const auto isHarmless = [&](const SourceLine& line) {
        if (line.token == Token::Display || line.token == Token::Increment) return true;
        if (NumberAssigned(compilation, line) || StepOf(compilation, line) == 1) return true;
        const auto sides = SidesOf(compilation, line);
        const auto compared = sides ? WithNumber(*sides) : std::nullopt;
        return compared && compared->number > 1;
    };
    return std::ranges::all_of(compilation.sourceLines, [&](const SourceLine& line) {
        const auto elements = compilation.ElementsOf(line);
        const bool isUsed = std::ranges::any_of(elements, [&](const LineElement& element) {
            return element.location == variable.location;
        });
        return !isUsed || isHarmless(line);
    });
}

}  // namespace zentro
