#include "model/symbol_table.h"

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

SymbolTable::SymbolTable(std::pmr::memory_resource* memory) : texts_(memory) {
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
    const NameIndex::Key key(name);
    const std::uint32_t known = parentNames_.Find(key);
    if (known != NameIndex::kNone) return static_cast<ParentId>(known);
    const auto number = static_cast<std::uint32_t>(parents_.size());
    parents_.push_back({name});
    parentNames_.Add(key, number);
    return static_cast<ParentId>(number);
}

std::string_view SymbolTable::NameOf(ParentId parent) const {
    return parents_[Number(parent)].name;
}

const Symbol* SymbolTable::FindSymbol(std::string_view name, ParentId parent) const {
    const NameIndex::Key key(name);
    std::uint32_t found = symbolNames_.Find(key, Number(parent));
    if (found == NameIndex::kNone && parent != ParentId::Program) {
        found = symbolNames_.Find(key, Number(ParentId::Program));
    }
    return found == NameIndex::kNone ? nullptr : &symbols_[found];
}

Symbol* SymbolTable::FindOwn(std::string_view name, ParentId parent) const {
    const std::uint32_t found = symbolNames_.Find(NameIndex::Key(name), Number(parent));
    return found == NameIndex::kNone ? nullptr : const_cast<Symbol*>(&symbols_[found]);
}

const Constant* SymbolTable::FindConstant(std::string_view name, ConstantKind kind) const {
    if (kind == ConstantKind::Text) {
        const auto found = textConstants_.find(name);
        return found == textConstants_.end() ? nullptr : &constants_[found->second];
    }
    const std::uint32_t found = constantNames_.Find(NameIndex::Key(name));
    return found == NameIndex::kNone ? nullptr : &constants_[found];
}

bool SymbolTable::IsDeclaredAnywhere(std::string_view name) const {
    return allNames_.Find(NameIndex::Key(name)) != NameIndex::kNone;
}

Symbol& SymbolTable::AddSymbol(const Symbol& symbol) {
    const auto number = static_cast<std::uint32_t>(symbols_.size());
    Symbol& entered = symbols_.emplace_back(symbol);
    entered.label.name =
        IsRoutine(symbol) ? symbol.name : texts_.Concat(NameOf(symbol.parent), "_", symbol.name);
    if (symbol.type == DataType::Table) entered.table = &tables_.emplace_back();
    const NameIndex::Key key(entered.name);
    symbolNames_.Add(key, number, Number(entered.parent));
    allNames_.Add(key, number);
    Parent& parent = parents_[Number(entered.parent)];
    (parent.last == nullptr ? parent.first : parent.last->nextOfParent) = &entered;
    parent.last = &entered;
    return entered;
}

const Constant& SymbolTable::AddConstant(std::string_view name, std::string_view value,
                                         ConstantKind kind) {
    if (const Constant* known = FindConstant(name, kind)) return *known;
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
        constantNames_.Add(NameIndex::Key(constant.name), number);
    }
    return constant;
}

const Symbol* SymbolTable::FirstOf(ParentId parent) const {
    return parents_[Number(parent)].first;
}

}  // namespace zentro
