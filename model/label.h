#pragma once

#include <cstdint>
#include <string_view>

namespace zentro {

/// A place in the board's memory that instructions name: a line, a routine, a variable, a constant.
/// Instructions point at the label; its address is known once every object line has its own.
struct Label {
    static constexpr std::int32_t kNowhere = -1;

    std::string_view name;  ///< as the listing shows it; lives as long as the compilation
    std::int32_t address = kNowhere;
};

}  // namespace zentro
