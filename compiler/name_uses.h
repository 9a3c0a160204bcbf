#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "compiler/compile.h"

namespace zentro {

/// What a name of a program stands for.
enum class NameKind : std::uint8_t { Variable, Parameter, Constant, Table, Routine, Event };

/// A place where a name stands.
struct NameUse {
    std::int32_t lineNo = 0;  ///< over all files, in the order of reading
    std::size_t begin = 0;    ///< in the line as it stands in its file
    std::size_t length = 0;
    ParentId seenFrom =
        ParentId::Program;  ///< the routine or event whose own names come first here
};

/// A name that a program declares, with all its places in the order of reading.
struct UsedName {
    std::string_view name;  ///< as it is declared
    NameKind kind = NameKind::Variable;
    ParentId parent = ParentId::Program;
    std::int32_t declareLineNo = 0;
    std::vector<NameUse> uses;

    /// The place of its declaration.
    const NameUse& Declaration() const;
};

/// The names of a program.
struct NameUses {
    std::vector<UsedName> names;
    bool wasReadToTheEnd = false;  ///< else a mistake has kept lines from being read
};

/// Reads a program, without checking its statements, and finds every place of every name that it
/// declares. Words in comments and in quotes, names of included files, the words of the language
/// and unquoted text in tables are no places of names. A compilation serves one run.
NameUses FindNameUses(Compilation& compilation, const ProgramFiles& files);

}  // namespace zentro
