#pragma once

#include <string>
#include <string_view>

#include "model/compilation.h"

namespace zentro {

/// Where the source and the object code of a program are. Folders and names are UTF-8; an empty
/// folder is the current one.
struct ProgramFiles {
    std::string sourceDirectory;
    std::string sourceFileName;
    std::string includeDirectory;  ///< where included files are looked for
    std::string objectDirectory;
    std::string objectFileName;
};

/// Receives the listing of the object code.
class ListingSink {
  public:
    virtual ~ListingSink() = default;
    /// One line of the listing, UTF-8, without a line break.
    virtual void AddCodeLine(std::string_view text) = 0;
};

/// Writes files. The listing and the object file of a compilation go through it.
class FileWriter {
  public:
    virtual ~FileWriter() = default;
    /// Replaces the file whole or leaves it as it was. Returns the system's text for the failure,
    /// empty on success.
    virtual std::string Write(const std::string& path, std::string_view bytes) = 0;
};

/// Compiles a program: reads it, parses it, generates its object code, gives it its addresses and
/// writes the object file and, when there is a sink for it, the listing. True when every stage
/// succeeded; errors that only the last stages find are counted but do not keep the object file
/// from being written. A compilation serves one run.
bool CompileSource(Compilation& compilation, const ProgramFiles& files, FileWriter& writer,
                   ListingSink* listing);

/// Reads and parses a program. True when it has no errors.
bool SyntaxCheck(Compilation& compilation, const ProgramFiles& files);

}  // namespace zentro
