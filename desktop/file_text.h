#pragma once

#include <string>
#include <string_view>

namespace zentro {

/// The text of a file as an editor holds it.
struct FileText {
    std::string text;              ///< UTF-8; lines end in LF, the last one ends with the text
    std::string lineEnd;           ///< how lines ended in the file, or how they end on this system
    bool isLastLineEnded = false;  ///< a line end stood after the last line
};

/// How lines end in a new file.
std::string_view SystemLineEnd();

/// The text of a file's bytes, which are UTF-8 or else Windows-1252. The line end after the last
/// line is not part of the text: saving writes it.
FileText FromFileBytes(std::string_view bytes);

/// The bytes to write: the whole text followed by a line end.
std::string ToFileBytes(const FileText& file);

}  // namespace zentro
