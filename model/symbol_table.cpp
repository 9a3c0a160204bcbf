#include "model/symbol_table.h"

#include "model/value_bounds.h"

namespace zentro {

namespace {

bool IsRoutine(const Symbol& symbol) {
    return symbol.symbolClass == SymbolClass::Routine || symbol.symbolClass == SymbolClass::Event;
}

}  // namespace

SymbolTable::SymbolTable(std::pmr::memory_resource* memory) : texts_(memory) {
    for (const std::string_view name : {"%SysTemp", "%SysTemp2"}) {
        Symbol scratch;
        scratch.name = name;
        scratch.type = DataType::Word;
        scratch.defaultValue = "0";
        AddSymbol(scratch).label.name = name;
    }
}

const Symbol* SymbolTable::FindSymbol(std::string_view name, std::string_view parentName) const {
    const Symbol* own = FindOwn(name, parentName);
    return own != nullptr || parentName == kProgram ? own : FindOwn(name, kProgram);
}

Symbol* SymbolTable::FindOwn(std::string_view name, std::string_view parentName) const {
    const auto found = byKey_.find(Key{parentName, name});
    return found == byKey_.end() ? nullptr : found->second;
}

const Constant* SymbolTable::FindConstant(std::string_view name, ConstantKind kind) const {
    if (kind == ConstantKind::Text) {
        const auto found = textConstants_.find(name);
        return found == textConstants_.end() ? nullptr : found->second;
    }
    const auto found = namedConstants_.find(name);
    return found == namedConstants_.end() ? nullptr : found->second;
}

Symbol& SymbolTable::AddSymbol(Symbol symbol) {
    symbol.label.name =
        IsRoutine(symbol) ? symbol.name : texts_.Concat(symbol.parentName, "_", symbol.name);
    Symbol& entered = symbols_.emplace_back(symbol);
    byKey_.emplace(Key{entered.parentName, entered.name}, &entered);
    byParent_[entered.parentName].push_back(&entered);
    declaredNames_.emplace(entered.name, 0);
    if (IsRoutine(entered)) routinesByLine_.emplace(entered.declareLineNo, &entered);
    return entered;
}

const Constant& SymbolTable::AddConstant(std::string_view name, std::string_view value,
                                         ConstantKind kind) {
    if (const Constant* known = FindConstant(name, kind)) return *known;
    Constant& constant = constants_.emplace_back();
    constant.word.name = texts_.Concat("W_", name);
    constant.name = constant.word.name.substr(2);
    constant.value = name == value ? constant.name : texts_.Store(value);
    constant.fitsByte = CheckValueBounds(DataType::Byte, value);
    if (constant.fitsByte) constant.byte.name = texts_.Concat("B_", name);
    if (kind == ConstantKind::Text) {
        textConstants_.emplace(constant.name, &constant);
    } else {
        namedConstants_.emplace(constant.name, &constant);
    }
    return constant;
}

const std::vector<Symbol*>& SymbolTable::SymbolsOf(std::string_view parentName) const {
    static const std::vector<Symbol*> kNone;
    const auto found = byParent_.find(parentName);
    return found == byParent_.end() ? kNone : found->second;
}

Symbol* SymbolTable::RoutineDeclaredAt(std::int32_t lineNumber) const {
    const auto found = routinesByLine_.find(lineNumber);
    return found == routinesByLine_.end() ? nullptr : found->second;
}

}  // namespace zentro
