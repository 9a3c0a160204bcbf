#include <algorithm>

#include "advice/advice_finders.h"
#include "advice/line_values.h"

namespace zentro {

namespace {

/// The two variables of Left = Right; nothing for other lines.
struct MadeEqual {
    const Label* target = nullptr;
    const Label* source = nullptr;
};

std::optional<MadeEqual> MadeEqualBy(const Compilation& compilation, const SourceLine& line) {
    const auto elements = compilation.ElementsOf(line);
    if (line.token != Token::Equal || elements.size() != 2 || elements[1].IsConstant())
        return std::nullopt;
    return MadeEqual{elements[0].location, elements[1].location};
}

bool AreThose(const MadeEqual& equal, const Label* one, const Label* other) {
    return (equal.target == one && equal.source == other) ||
           (equal.target == other && equal.source == one);
}

/// What an input reads that changes while a program runs. Others, such as switches, are often read
/// once at the beginning.
bool IsReading(Token token) {
    return token == Token::Analog || token == Token::Button || token == Token::Joystick ||
           token == Token::Stick || token == Token::Clock;
}

}  // namespace

void ChoiceAdvice::Look(const SourceLine& line) {
    if (before_ != nullptr) LookAtPair(*before_, line);
    before_ = &line;
    const BlockRole role = search_.role;
    if (role == BlockRole::Ends && !blocks_.empty()) {
        LookAtWays(blocks_.back());
        if (blocks_.size() == 1) LookAtReadings(blocks_.back(), line);
        blocks_.pop_back();
    }
    const bool isOther = line.token == Token::Else && !blocks_.empty();
    for (Block& block : blocks_) {
        const bool isEdge = isOther && &block == &blocks_.back();
        const bool isKept = block.first->token == Token::If ? !isEdge : line.token == Token::If;
        if (isKept) (block.other != nullptr ? block.otherLines : block.lines).push_back(&line);
    }
    if (isOther) blocks_.back().other = &line;
    if (role == BlockRole::Opens) blocks_.push_back({&line});
}

/// IF and ELSE with the same lines below them.
void ChoiceAdvice::LookAtWays(const Block& block) {
    const auto isSame = [](const SourceLine* one, const SourceLine* other) {
        return one->parsedLine == other->parsedLine;
    };
    const bool areSame = block.first->token == Token::If && block.other != nullptr &&
                         !block.lines.empty() &&
                         std::ranges::equal(block.lines, block.otherLines, isSame);
    if (areSame) search_.Add(*block.first, MessageCode::SameWays);
}

void ChoiceAdvice::LookAtPair(const SourceLine& before, const SourceLine& line) {
    const Compilation& compilation = search_.compilation;
    const bool isIf = line.token == Token::If;
    const SourceLine* above = before.token == Token::If ? &before : nullptr;
    if (before.token == Token::Else && !blocks_.empty()) above = blocks_.back().first;
    if (isIf && above != nullptr && above->parsedLine == line.parsedLine)
        search_.Add(line, MessageCode::AskedAgain);
    const auto equal = MadeEqualBy(compilation, before);
    if (!equal || equal->target == equal->source) return;
    if (const auto back = MadeEqualBy(compilation, line);
        back && back->target == equal->source && back->source == equal->target)
        search_.Add(line, MessageCode::NotExchanged);
    const auto sides = isIf || line.token == Token::Until ? SidesOf(compilation, line)
                                                          : std::optional<ComparedSides>();
    if (sides && !sides->first->IsConstant() && !sides->second->IsConstant() &&
        AreThose(*equal, sides->first->location, sides->second->location))
        search_.Add(line, MessageCode::MadeEqualAbove);
}

/// Whether the variable has been read before the loop, and by nothing but such lines.
bool ChoiceAdvice::IsReadBefore(const LineElement& variable, const SourceLine& loop) const {
    const auto changes = search_.uses.ChangesOf(variable.location);
    return !changes.empty() &&
           std::ranges::all_of(changes, [&](const VariableUses::Change& change) {
               return IsReading(change.line->token) && change.line->lineNumber < loop.lineNumber;
           });
}

/// IF Light > 100 in a LOOP, where Light is read above the LOOP only.
void ChoiceAdvice::LookAtReadings(const Block& loop, const SourceLine& last) {
    if (loop.first->token != Token::Loop) return;
    std::set<const Label*> told;
    for (const SourceLine* line : loop.lines) {
        const auto sides = line->token == Token::If ? SidesOf(search_.compilation, *line)
                                                    : std::optional<ComparedSides>();
        const auto compared = sides ? WithNumber(*sides) : std::nullopt;
        if (!compared || !IsReadBefore(*compared->variable, *loop.first)) continue;
        const Label* variable = compared->variable->location;
        if (search_.uses.MayChangeWithin(variable, *loop.first, last) ||
            !told.insert(variable).second)
            continue;
        search_.Add(*line, MessageCode::ReadOnlyBefore, search_.uses.NameOf(*compared->variable));
    }
}

}  // namespace zentro
