#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace zentro::world {

/// The world for which a program was written, by the comment "; world: maze.world" among the lines
/// before its first statement. Empty: it names none.
std::string WorldNamedIn(std::string_view source);
/// The line of that comment, the first one being 0.
std::optional<std::size_t> LineOfWorld(std::string_view source);

/// The file of a world that a program names: beside the program, or else among the shipped ones.
/// Where neither has it, the path beside the program.
std::filesystem::path FindWorld(std::string_view name, const std::filesystem::path& programFolder,
                                const std::filesystem::path& shippedWorlds);

}  // namespace zentro::world
