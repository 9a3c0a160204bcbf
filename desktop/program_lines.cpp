#include "desktop/program_lines.h"

#include "compiler/line_starts.h"
#include "desktop/program_report.h"

namespace zentro {

ProgramLines::ProgramLines(const Compilation& compilation, const FileKeys& keyOf) {
    std::map<const SourceFile*, QString> keys;
    for (const SourceFile& file : compilation.files)
        keys[&file] =
            keyOf(QString::fromStdString(file.directory), QString::fromStdString(file.name));
    LineStarts starts(kMemorySize, false);
    for (const LineStart& start : LineStartsOf(compilation)) {
        const SourceLine& line = compilation.GetSourceLine(start.lineNumber);
        lines_[keys[line.file]].emplace(line.fileLineNo, start.address);
        starts[start.address] = true;
    }
    for (const SourceLine& line : compilation.sourceLines) {
        std::vector<ParentId>& scopes = scopes_[keys[line.file]];
        scopes.resize(static_cast<std::size_t>(line.fileLineNo), ParentId::Program);
        scopes.back() = line.parent;
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

ParentId ProgramLines::ScopeOf(const QString& fileKey, int line) const {
    const auto scopes = scopes_.find(fileKey);
    if (scopes == scopes_.end() || line < 1 || line > static_cast<int>(scopes->second.size()))
        return ParentId::Program;
    return scopes->second[static_cast<std::size_t>(line) - 1];
}

}  // namespace zentro
