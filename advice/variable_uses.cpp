#include "advice/variable_uses.h"

#include <algorithm>
#include <functional>

namespace zentro {

namespace {

bool MayChange(const SourceLine& line, const LineElement& element) {
    return element.use == ElementUse::Written || line.token == Token::Increment ||
           line.token == Token::Decrement || line.token == Token::DefineRoutine;
}

bool IsExit(Token token) {
    return token == Token::Return || token == Token::Escape || token == Token::PowerOff ||
           token == Token::EmergencyStop;
}

const Label* LabelOf(const Symbol* symbol) {
    return &symbol->label;
}

bool StandsWithin(const SourceLine& line, const SourceLine& first, const SourceLine& last) {
    return line.lineNumber >= first.lineNumber && line.lineNumber <= last.lineNumber;
}

}  // namespace

VariableUses::VariableUses(const Compilation& compilation) : compilation_(compilation) {
    for (const Symbol& symbol : compilation.symbols.Symbols()) {
        if (symbol.declareLineNo != 0) symbols_.push_back(&symbol);
    }
    std::ranges::sort(symbols_, std::less<>{}, LabelOf);
    for (const SourceLine& line : compilation.sourceLines) {
        if (line.GeneratesCode()) Enter(line);
    }
    std::ranges::stable_sort(changes_, std::less<>{}, &Change::variable);
}

void VariableUses::Enter(const SourceLine& line) {
    if (line.token == Token::DefineEvent) events_.push_back(line.parent);
    if (IsExit(line.token)) exits_.push_back(&line);
    for (const LineElement& element : compilation_.ElementsOf(line)) {
        if (element.location == nullptr) continue;
        if (element.elementClass == ElementClass::Call) {
            if (const Symbol* routine = SymbolOf(element.location); routine != nullptr)
                calls_.push_back(
                    {&line, compilation_.GetSourceLine(routine->declareLineNo).parent});
        } else if (MayChange(line, element)) {
            changes_.push_back({element.location, &line});
        }
    }
}

std::span<const VariableUses::Change> VariableUses::ChangesOf(const Label* variable) const {
    const std::less<> order;
    return {std::ranges::lower_bound(changes_, variable, order, &Change::variable),
            std::ranges::upper_bound(changes_, variable, order, &Change::variable)};
}

/// The events, and the routines that they or the lines call, directly or through others.
std::set<ParentId> VariableUses::RunningWith(const SourceLine& first,
                                             const SourceLine& last) const {
    std::set<ParentId> running(events_.begin(), events_.end());
    for (const Call& call : calls_) {
        if (StandsWithin(*call.line, first, last)) running.insert(call.routine);
    }
    for (std::size_t before = 0; before != running.size();) {
        before = running.size();
        for (const Call& call : calls_) {
            if (running.contains(call.line->parent)) running.insert(call.routine);
        }
    }
    return running;
}

bool VariableUses::MayChangeWithin(const Label* variable, const SourceLine& first,
                                   const SourceLine& last) const {
    const auto changes = ChangesOf(variable);
    const auto isWithin = [&](const Change& change) {
        return StandsWithin(*change.line, first, last);
    };
    if (std::ranges::any_of(changes, isWithin)) return true;
    const auto isElsewhere = [](const Change& change) {
        return change.line->parent != ParentId::Program;
    };
    if (std::ranges::none_of(changes, isElsewhere)) return false;
    const std::set<ParentId> running = RunningWith(first, last);
    return std::ranges::any_of(
        changes, [&](const Change& change) { return running.contains(change.line->parent); });
}

bool VariableUses::MayBeLeftWithin(const SourceLine& first, const SourceLine& last) const {
    return std::ranges::any_of(exits_, [&](const SourceLine* line) {
        const bool endsProgram = line->token != Token::Return;
        return StandsWithin(*line, first, last) ||
               (endsProgram && line->parent != ParentId::Program);
    });
}

bool VariableUses::IsInEvent(const SourceLine& line) const {
    return std::ranges::find(events_, line.parent) != events_.end();
}

const Symbol* VariableUses::SymbolOf(const Label* location) const {
    const auto symbol = std::ranges::lower_bound(symbols_, location, std::less<>{}, LabelOf);
    return symbol == symbols_.end() || LabelOf(*symbol) != location ? nullptr : *symbol;
}

std::string_view VariableUses::NameOf(const LineElement& variable) const {
    const Symbol* symbol = SymbolOf(variable.location);
    return symbol == nullptr ? variable.Name() : symbol->name;
}

}  // namespace zentro
