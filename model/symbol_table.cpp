#include "model/symbol_table.h"

#include <string>
#include <utility>

#include "config/text.h"
#include "model/value_bounds.h"

namespace zentro {

namespace {

bool IsRoutine(const Symbol& symbol) {
    return symbol.symbolClass == SymbolClass::Routine || symbol.symbolClass == SymbolClass::Event;
}

std::uint32_t Number(ParentId parent) {
    return static_cast<std::uint32_t>(parent);
}

}  // namespace

SymbolTable::SymbolTable(std::pmr::memory_resource* memory)
    : texts_(memory), parents_(memory), symbols_(memory), constants_(memory), tables_(memory) {
    ParentWithName(kProgram);
    for (const std::string_view name : {"%SysTemp", "%SysTemp2"}) {
        Symbol scratch;
        scratch.name = name;
        scratch.type = DataType::Word;
        scratch.defaultValue = "0";
        AddSymbol(scratch).label.name = name;
    }
}

ParentId SymbolTable::ParentWithName(std::string_view name) {
    const NameKey key(name);
    const std::uint32_t known = parentNames_.Find(key.hash, [&](std::uint32_t place) {
        return EqualsIgnoreCase(parents_[place].name, name);
    });
    if (known != NameIndex::kNone) return static_cast<ParentId>(known);
    const auto number = static_cast<std::uint32_t>(parents_.size());
    parents_.push_back({name, PrefixFor(name, number)});
    parentNames_.Add(key.hash, number);
    return static_cast<ParentId>(number);
}

std::string_view SymbolTable::PrefixFor(std::string_view name, std::uint32_t number) {
    constexpr std::size_t kLongestPrefix = 255;
    if (name.size() <= kLongestPrefix) return name;
    return texts_.Concat(name.substr(0, kLongestPrefix), "~", std::to_string(number));
}

std::string_view SymbolTable::NameOf(ParentId parent) const {
    return parents_[Number(parent)].name;
}

const Symbol* SymbolTable::FindSymbol(const NameKey& name, ParentId parent) const {
    // Operands that are no names are numbers and texts. The compiler's own names are out of reach.
    if (name.name.empty() || !IsLetter(name.name.front())) return nullptr;
    const Symbol* own = FindOwn(name, parent);
    return own != nullptr || parent == ParentId::Program ? own : FindOwn(name, ParentId::Program);
}

const Symbol* SymbolTable::FindOwn(const NameKey& name, ParentId parent) const {
    const std::uint32_t found =
        symbolNames_.Find(name.HashFor(Number(parent)), [&](std::uint32_t place) {
            const Symbol& symbol = symbols_[place];
            return symbol.parent == parent && EqualsIgnoreCase(symbol.name, name.name);
        });
    return found == NameIndex::kNone ? nullptr : &symbols_[found];
}

Symbol* SymbolTable::FindOwn(const NameKey& name, ParentId parent) {
    return const_cast<Symbol*>(std::as_const(*this).FindOwn(name, parent));
}

const Constant* SymbolTable::FindConstant(const NameKey& name) const {
    const std::uint32_t found = constantNames_.Find(name.hash, [&](std::uint32_t place) {
        return EqualsIgnoreCase(constants_[place].name, name.name);
    });
    return found == NameIndex::kNone ? nullptr : &constants_[found];
}

const Constant* SymbolTable::FindTextConstant(std::string_view text) const {
    const auto found = textConstants_.find(text);
    return found == textConstants_.end() ? nullptr : &constants_[found->second];
}

bool SymbolTable::IsDeclaredAnywhere(const NameKey& name) const {
    const std::uint32_t found = allNames_.Find(name.hash, [&](std::uint32_t place) {
        return EqualsIgnoreCase(symbols_[place].name, name.name);
    });
    return found != NameIndex::kNone;
}

Symbol& SymbolTable::AddSymbol(const Symbol& symbol) {
    const auto number = static_cast<std::uint32_t>(symbols_.size());
    Symbol& entered = symbols_.emplace_back(symbol);
    entered.label.name =
        IsRoutine(symbol) ? symbol.name
                          : texts_.Concat(parents_[Number(symbol.parent)].prefix, "_", symbol.name);
    if (symbol.type == DataType::Table) entered.table = &tables_.emplace_back();
    const NameKey key(entered.name);
    symbolNames_.Add(key.HashFor(Number(entered.parent)), number);
    if (!IsDeclaredAnywhere(key)) allNames_.Add(key.hash, number);
    Parent& parent = parents_[Number(entered.parent)];
    (parent.last == nullptr ? parent.first : parent.last->nextOfParent) = &entered;
    parent.last = &entered;
    return entered;
}

const Constant& SymbolTable::AddConstant(std::string_view name, std::string_view value,
                                         ConstantKind kind) {
    const Constant* known =
        kind == ConstantKind::Text ? FindTextConstant(name) : FindConstant(name);
    if (known != nullptr) return *known;
    const auto number = static_cast<std::uint32_t>(constants_.size());
    Constant& constant = constants_.emplace_back();
    constant.word.name = texts_.Concat("W_", name);
    constant.name = constant.word.name.substr(2);
    constant.value = name == value ? constant.name : texts_.Store(value);
    constant.fitsByte = CheckValueBounds(DataType::Byte, value);
    if (constant.fitsByte) constant.byte.name = texts_.Concat("B_", name);
    if (kind == ConstantKind::Text) {
        textConstants_.emplace(constant.name, number);
    } else {
        constantNames_.Add(NameKey(constant.name).hash, number);
    }
    return constant;
}

const Symbol* SymbolTable::FirstOf(ParentId parent) const {
    return parents_[Number(parent)].first;
}

}  // namespace zentro
