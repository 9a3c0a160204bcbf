#pragma once

#include <cstdint>
#include <deque>
#include <memory_resource>
#include <string_view>
#include <unordered_map>

#include "config/name_index.h"
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

    /// The number of the parent with the name, new or known.
    ParentId ParentWithName(std::string_view name);
    std::string_view NameOf(ParentId parent) const;

    /// The symbol with the name that the parent declares, else the program's; nothing when
    /// neither declares it.
    const Symbol* FindSymbol(const NameKey& name, ParentId parent) const;

    /// The symbol with the name that this very parent declares, or nothing.
    const Symbol* FindOwn(const NameKey& name, ParentId parent) const;
    Symbol* FindOwn(const NameKey& name, ParentId parent);

    /// The constant or number with the name, or nothing.
    const Constant* FindConstant(const NameKey& name) const;
    /// The text literal, whose letter case counts, or nothing.
    const Constant* FindTextConstant(std::string_view text) const;

    /// True when any parent declares a variable, routine or event with the name.
    bool IsDeclaredAnywhere(const NameKey& name) const;

    /// Enters a symbol and makes its resolved name. Its name must be valid and new to its parent.
    Symbol& AddSymbol(const Symbol& symbol);

    /// Enters a constant, unless it is known already, and returns it. The texts are copied.
    const Constant& AddConstant(std::string_view name, std::string_view value, ConstantKind kind);

    /// The first of what the parent declares, linked in the order of declaration; nothing when it
    /// declares nothing.
    const Symbol* FirstOf(ParentId parent) const;

    std::pmr::deque<Symbol>& Symbols() { return symbols_; }
    const std::pmr::deque<Symbol>& Symbols() const { return symbols_; }
    std::pmr::deque<Constant>& Constants() { return constants_; }
    const std::pmr::deque<Constant>& Constants() const { return constants_; }

    /// The two word variables in which the compiler keeps intermediate results.
    const Label& ScratchOne() const { return symbols_[0].label; }
    const Label& ScratchTwo() const { return symbols_[1].label; }

  private:
    struct Parent {
        std::string_view name;
        std::string_view prefix;  ///< what the labels of its symbols begin with
        Symbol* first = nullptr;
        Symbol* last = nullptr;
    };

    /// The name; of one beyond all measure the beginning and its number, since every symbol of the
    /// parent repeats it.
    std::string_view PrefixFor(std::string_view name, std::uint32_t number);

    TextArena texts_;
    std::pmr::deque<Parent> parents_;
    std::pmr::deque<Symbol> symbols_;
    std::pmr::deque<Constant> constants_;
    std::pmr::deque<TableData> tables_;
    NameIndex parentNames_;
    NameIndex symbolNames_;  ///< owned by their parents
    NameIndex allNames_;     ///< of symbols, whatever their parent
    NameIndex constantNames_;
    std::unordered_map<std::string_view, std::uint32_t> textConstants_;
};

}  // namespace zentro
