#pragma once

#include <cstdint>
#include <string_view>

namespace zentro {

/// A name with a number. Most stand for a place in the board's memory that instructions name (a
/// line, a routine, a variable, a constant): instructions point at the label, and its address is
/// known once every object line has its own. A value that is part of an instruction is a label too:
/// the name is what the listing shows, the address is the value itself.
struct Label {
    static constexpr std::int32_t kNowhere = -1;

    std::string_view name;  ///< lives as long as the compilation
    std::int32_t address = kNowhere;
};

}  // namespace zentro
