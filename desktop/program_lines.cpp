#include "desktop/program_lines.h"

#include "compiler/line_starts.h"
#include "desktop/program_report.h"

namespace zentro {

ProgramLines::ProgramLines(const Compilation& compilation) {
    std::map<const SourceFile*, std::map<int, std::uint16_t>*> ofFiles;
    for (const SourceFile& file : compilation.files) {
        ofFiles[&file] =
            &lines_[FileKey(QString::fromStdString(file.directory), QString::fromStdString(file.name))];
    }
    LineStarts starts(kMemorySize, false);
    for (const LineStart& start : LineStartsOf(compilation)) {
        const SourceLine& line = compilation.GetSourceLine(start.lineNumber);
        ofFiles.at(line.file)->emplace(line.fileLineNo, start.address);
        starts[start.address] = true;
    }
    starts_ = std::make_shared<const LineStarts>(std::move(starts));
}

std::optional<std::uint16_t> ProgramLines::StartOf(const QString& fileKey, int line) const {
    const auto file = lines_.find(fileKey);
    if (file == lines_.end()) return std::nullopt;
    const auto found = file->second.find(line);
    if (found == file->second.end()) return std::nullopt;
    return found->second;
}

std::optional<int> ProgramLines::LineWithCode(const QString& fileKey, int line) const {
    const auto file = lines_.find(fileKey);
    if (file == lines_.end()) return std::nullopt;
    const auto found = file->second.lower_bound(line);
    if (found == file->second.end()) return std::nullopt;
    return found->first;
}

}  // namespace zentro
