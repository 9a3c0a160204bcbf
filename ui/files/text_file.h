#pragma once

#include <QString>
#include <cstdint>
#include <optional>

namespace zentro {

enum class LineEnd : std::uint8_t { Lf, CrLf, Cr };

/// A text file as it was read.
struct LoadedText {
    QString text;     ///< lines end in LF; the line end that saving adds is taken off
    QString problem;  ///< the system's text for the failure; empty: it was read
    QString note;     ///< what the user should know about its characters; empty: nothing
};

/// Reads a text file: UTF-8, a byte-order mark ignored, and what is not valid UTF-8 as
/// Windows-1252. Any line end will do.
LoadedText LoadText(const QString& path);

/// Writes the text and a line end, or leaves the file as it was. UTF-8. Lines end as `lineEnd`
/// says, otherwise as in the file that is replaced, and in a new file as is usual on this system.
/// The text is on the disk when this returns. Returns the system's text for the failure, empty on
/// success.
QString SaveText(const QString& path, const QString& text, std::optional<LineEnd> lineEnd = {});

/// The path as config/file.h takes it.
std::string SystemPath(const QString& path);

}  // namespace zentro
