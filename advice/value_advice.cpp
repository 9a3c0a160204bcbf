#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>

#include "advice/advice_finders.h"
#include "advice/line_values.h"
#include "model/value_bounds.h"

namespace zentro {

namespace {

bool IsLoop(Token token) {
    return token == Token::Loop || token == Token::While || token == Token::Repeat;
}

/// Whether the tune comes to a note of 0. Its notes are every second byte.
bool HasEnd(const TableData& tune) {
    std::size_t at = 0;
    bool found = false;
    tune.ForEach([&](std::uint8_t byte) {
        found = at++ % 2 == 0 && byte == 0;
        return !found;
    });
    return found;
}

}  // namespace

void ValueAdvice::Look(const SourceLine& line) {
    LookAtCase(line);
    if (line.token == Token::PlayTune) LookAtTune(line);
    if (line.token == Token::Plus) LookAtSum(line);
    LookAtPause(line);
    const BlockRole role = search_.role;
    if (role == BlockRole::Opens) blocks_.push_back({&line});
    if (role == BlockRole::Ends && !blocks_.empty()) {
        LookAtBlock(blocks_.back(), line);
        if (line.token == Token::EndWhile) LookAtRounds(*blocks_.back().first, line);
        blocks_.pop_back();
    }
}

void ValueAdvice::LookAtCase(const SourceLine& line) {
    if (line.token != Token::Case || blocks_.empty()) return;
    for (const LineElement& element : search_.compilation.ElementsOf(line)) {
        const auto value = ValueOf(element);
        if (value && !blocks_.back().cases.insert(*value).second)
            return search_.Add(line, MessageCode::CaseAgain);
    }
}

void ValueAdvice::LookAtTune(const SourceLine& line) {
    for (const LineElement& element : search_.compilation.ElementsOf(line)) {
        const Symbol* symbol = search_.uses.SymbolOf(element.location);
        const bool isTable = symbol != nullptr && symbol->table != nullptr;
        if (isTable && !HasEnd(*symbol->table))
            search_.Add(line, MessageCode::TuneWithoutEnd, symbol->name);
    }
}

/// Whether the variable gets nothing but what an input of many values reads.
bool ValueAdvice::HoldsReading(const LineElement& variable) const {
    const auto changes = search_.uses.ChangesOf(variable.location);
    return !changes.empty() && std::ranges::all_of(changes, [](const VariableUses::Change& change) {
        const Token token = change.line->token;
        return token == Token::Analog || token == Token::Joystick || token == Token::Stick;
    });
}

/// Sum = Sum + Light in a loop that sets Sum to nothing else.
void ValueAdvice::LookAtSum(const SourceLine& line) {
    const auto elements = search_.compilation.ElementsOf(line);
    if (elements.size() != 3 || elements[0].type != DataType::Byte) return;
    const LineElement& sum = elements[0];
    const bool isFirst = elements[1].location == sum.location;
    const LineElement& added = isFirst ? elements[2] : elements[1];
    const bool isSum = isFirst || elements[2].location == sum.location;
    if (!isSum || added.IsConstant() || !HoldsReading(added)) return;
    const auto loop = std::find_if(blocks_.rbegin(), blocks_.rend(),
                                   [](const Block& block) { return IsLoop(block.first->token); });
    if (loop == blocks_.rend()) return;
    const bool isOnly = std::ranges::none_of(
        search_.uses.ChangesOf(sum.location), [&](const VariableUses::Change& change) {
            return change.line != &line && change.line->lineNumber > loop->first->lineNumber &&
                   change.line->lineNumber < line.lineNumber;
        });
    if (isOnly) search_.Add(line, MessageCode::SumBeyondByte, search_.uses.NameOf(sum));
}

/// Whether all that a flag ever becomes is TRUE, in an event.
bool ValueAdvice::OnlyRises(const LineElement& flag) const {
    const auto changes = search_.uses.ChangesOf(flag.location);
    const Symbol* symbol = search_.uses.SymbolOf(flag.location);
    const bool beginsFalse =
        symbol != nullptr && (!symbol->IsDefaulted() || NumberOf(symbol->defaultValue) == 0);
    return beginsFalse && flag.type == DataType::Flag && !changes.empty() &&
           std::ranges::all_of(changes, [&](const VariableUses::Change& change) {
               return NumberAssigned(search_.compilation, *change.line).value_or(0) != 0 &&
                      search_.uses.IsInEvent(*change.line);
           });
}

void ValueAdvice::LookAtPause(const SourceLine& line) {
    if (line.token == Token::Wait) {
        for (Block& block : blocks_)
            block.hasPause = true;
    }
}

/// IF Bump = TRUE in a LOOP, with a pause in what is done then: it is meant to be done once.
void ValueAdvice::LookAtBlock(const Block& block, const SourceLine& last) {
    const bool isInLoop =
        blocks_.size() > 1 && blocks_[blocks_.size() - 2].first->token == Token::Loop;
    if (last.token != Token::EndIf || !block.hasPause || !isInLoop) return;
    const auto sides = SidesOf(search_.compilation, *block.first);
    const auto compared = sides ? WithNumber(*sides) : std::nullopt;
    const bool isRisen = compared && compared->number != 0 && sides->comparison == Token::Equal &&
                         OnlyRises(*compared->variable);
    if (!isRisen || search_.uses.MayBeLeftWithin(*block.first, last)) return;
    search_.Add(*block.first, MessageCode::FlagStaysTrue, search_.uses.NameOf(*compared->variable));
}

/// How often a loop runs that counts from a number up to one: WHILE Count < 4. 0: that is not
/// certain.
std::int32_t ValueAdvice::RoundsOf(const SourceLine& first, const SourceLine& last) const {
    const auto sides = SidesOf(search_.compilation, first);
    const auto most = sides ? ValueOf(*sides->second) : std::nullopt;
    if (!most || sides->first->IsConstant()) return 0;
    const bool isUpTo =
        sides->comparison == Token::LessOrEqual || sides->comparison == Token::EqualOrLess;
    const Symbol* count = search_.uses.SymbolOf(sides->first->location);
    const auto changes = search_.uses.ChangesOf(sides->first->location);
    const bool isCounted = count != nullptr && changes.size() == 1 &&
                           changes[0].line->token == Token::Increment &&
                           changes[0].line->lineNumber > first.lineNumber &&
                           changes[0].line->lineNumber < last.lineNumber;
    if (!isCounted || (!isUpTo && sides->comparison != Token::Less)) return 0;
    return *most - NumberOf(count->defaultValue).value_or(0) + (isUpTo ? 1 : 0);
}

/// The table through which the line leads a pointer byte by byte, from its beginning at the first
/// round; nothing: that is not certain.
const Symbol* ValueAdvice::TableReadBy(const SourceLine& step, const SourceLine& first) const {
    const Compilation& compilation = search_.compilation;
    const auto elements = compilation.ElementsOf(step);
    const bool isStep = step.token == Token::Plus && elements.size() == 3 &&
                        elements[0].type == DataType::Pointer &&
                        elements[1].location == elements[0].location && ValueOf(elements[2]) == 1;
    if (!isStep) return nullptr;
    const auto changes = search_.uses.ChangesOf(elements[0].location);
    const bool isSetOnce = changes.size() == 2 && changes[0].line->token == Token::AddressOf &&
                           changes[0].line->lineNumber < first.lineNumber;
    const auto given = isSetOnce ? compilation.ElementsOf(*changes[0].line) : elements.first(0);
    return given.empty() ? nullptr : search_.uses.SymbolOf(given.back().location);
}

void ValueAdvice::LookAtRounds(const SourceLine& first, const SourceLine& last) {
    const std::int32_t rounds = RoundsOf(first, last);
    if (rounds <= 0) return;
    for (const SourceLine& line : search_.compilation.sourceLines) {
        if (line.lineNumber <= first.lineNumber || line.lineNumber >= last.lineNumber) continue;
        const Symbol* table = TableReadBy(line, first);
        if (table == nullptr || table->table == nullptr) continue;
        if (static_cast<std::size_t>(rounds) > table->table->Size())
            search_.Add(first, MessageCode::BeyondTable, table->name);
    }
}

/// Variables that are compared, but that no line gives anything: they stay 0.
void ValueAdvice::Finish() {
    const Compilation& compilation = search_.compilation;
    std::set<const Label*> told;
    for (const SourceLine& line : compilation.sourceLines) {
        const bool asks = line.token == Token::If || line.token == Token::Select;
        if (!line.GeneratesCode() || !asks) continue;
        for (const LineElement& element : compilation.ElementsOf(line)) {
            const Symbol* symbol =
                element.IsConstant() ? nullptr : search_.uses.SymbolOf(element.location);
            if (symbol == nullptr || !StaysZero(*symbol) || !told.insert(&symbol->label).second)
                continue;
            search_.Add(line, MessageCode::NeverGivenValue, symbol->name);
        }
    }
}

bool ValueAdvice::StaysZero(const Symbol& symbol) const {
    const Compilation& compilation = search_.compilation;
    const bool isNumber = symbol.type == DataType::Byte || symbol.type == DataType::Word;
    if (symbol.symbolClass != SymbolClass::Variable || !isNumber || symbol.declareLineNo <= 0)
        return false;
    const SourceLine& line = compilation.GetSourceLine(symbol.declareLineNo);
    const bool isParameter = line.token == Token::DefineRoutine;
    const bool isZero = !symbol.IsDefaulted() || NumberOf(symbol.defaultValue) == 0;
    return !isParameter && isZero && line.file == &compilation.files.front() &&
           search_.uses.ChangesOf(&symbol.label).empty();
}

}  // namespace zentro
