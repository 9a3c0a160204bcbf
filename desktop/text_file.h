#pragma once

#include <QString>
#include <string>

#include "desktop/file_text.h"

namespace zentro {

/// A text file as it was read.
struct LoadedText {
    FileText file;
    std::string problem;  ///< the system's text for the failure; empty: it was read
};

/// Reads a text file: UTF-8, a byte-order mark ignored, and what is not valid UTF-8 as
/// Windows-1252. Any line end will do.
LoadedText LoadText(const QString& path);

/// Writes the text and a line end in UTF-8, or leaves the file as it was. The text is on the disk
/// when this returns. Returns the system's text for the failure, empty on success.
std::string SaveText(const QString& path, const FileText& text);

/// The path as config/file.h takes it.
std::string SystemPath(const QString& path);

}  // namespace zentro
