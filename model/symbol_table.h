#pragma once

#include <cstdint>
#include <deque>
#include <memory_resource>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "config/text.h"
#include "model/symbol.h"
#include "model/text_arena.h"

namespace zentro {

/// Text literals keep their letter case and are told apart from numbers and names of constants.
enum class ConstantKind : std::uint8_t {
    NamedOrNumber,
    Text,
};

/// Every named thing of a compilation, in the order of its entry, which is the order of the board's
/// data area. Symbols and constants stay where they are until the table goes.
class SymbolTable {
  public:
    explicit SymbolTable(std::pmr::memory_resource* memory);

    /// The symbol with the name that the parent declares, else the program's; nothing when
    /// neither declares it.
    const Symbol* FindSymbol(std::string_view name, std::string_view parentName) const;

    /// The symbol with the name that this very parent declares, or nothing.
    Symbol* FindOwn(std::string_view name, std::string_view parentName) const;

    const Constant* FindConstant(std::string_view name, ConstantKind kind) const;

    /// True when any parent declares a variable, routine or event with the name.
    bool IsDeclaredAnywhere(std::string_view name) const { return declaredNames_.contains(name); }

    /// Enters a symbol and makes its resolved name. Its name must be valid and new to its parent.
    Symbol& AddSymbol(Symbol symbol);

    /// Enters a constant, unless it is known already, and returns it. The texts are copied.
    const Constant& AddConstant(std::string_view name, std::string_view value, ConstantKind kind);

    /// What the parent declares, in the order of declaration.
    const std::vector<Symbol*>& SymbolsOf(std::string_view parentName) const;

    /// The routine or event that the line declares, or nothing.
    Symbol* RoutineDeclaredAt(std::int32_t lineNumber) const;

    const std::deque<Symbol>& Symbols() const { return symbols_; }
    const std::deque<Constant>& Constants() const { return constants_; }
    std::deque<Symbol>& Symbols() { return symbols_; }
    std::deque<Constant>& Constants() { return constants_; }

    /// The two word variables in which the compiler keeps intermediate results.
    const Label& ScratchOne() const { return symbols_[0].label; }
    const Label& ScratchTwo() const { return symbols_[1].label; }

  private:
    struct Key {
        std::string_view parentName;
        std::string_view name;
    };
    struct KeyHash {
        std::size_t operator()(const Key& key) const {
            constexpr std::size_t kSpread = 0x9E3779B97F4A7C15ULL;
            return FoldedHash{}(key.parentName) * kSpread + FoldedHash{}(key.name);
        }
    };
    struct KeyEqual {
        bool operator()(const Key& a, const Key& b) const {
            return EqualsIgnoreCase(a.name, b.name) && EqualsIgnoreCase(a.parentName, b.parentName);
        }
    };
    template <typename Value>
    using NameMap = std::unordered_map<std::string_view, Value, FoldedHash, FoldedEqual>;

    TextArena texts_;
    std::deque<Symbol> symbols_;
    std::deque<Constant> constants_;
    std::unordered_map<Key, Symbol*, KeyHash, KeyEqual> byKey_;
    NameMap<std::vector<Symbol*>> byParent_;
    NameMap<int> declaredNames_;
    NameMap<Constant*> namedConstants_;
    std::unordered_map<std::string_view, Constant*> textConstants_;
    std::unordered_map<std::int32_t, Symbol*> routinesByLine_;
};

}  // namespace zentro
