#include "compiler/load_source.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <unordered_set>
#include <utility>
#include <vector>

#include "compiler/paths.h"
#include "config/encoding.h"
#include "frontend/parse_declares.h"

namespace zentro {

namespace {

/// More source files than this cannot be open at once.
constexpr std::size_t kMaxOpenFiles = 255;
/// No program has this many, but files that include each other twice soon have.
constexpr std::size_t kMaxFiles = 10000;

/// Takes the lines of a text one by one. LF, CR LF and CR end a line.
class LineSplitter {
  public:
    explicit LineSplitter(std::string_view text) : rest_(text) {}

    std::optional<std::string_view> Next() {
        if (rest_.empty()) return std::nullopt;
        // Most lines end in LF; a CR before it ends the line sooner.
        const std::size_t lineFeed = std::min(rest_.find('\n'), rest_.size());
        const std::size_t end = std::min(rest_.substr(0, lineFeed).find('\r'), lineFeed);
        const std::string_view line = rest_.substr(0, end);
        rest_.remove_prefix(end);
        if (!rest_.empty()) rest_.remove_prefix(rest_.starts_with("\r\n") ? 2 : 1);
        return line;
    }

  private:
    std::string_view rest_;
};

class SourceLoader {
  public:
    SourceLoader(Compilation& compilation, const ProgramFiles& program)
        : compilation_(compilation), program_(program) {}

    bool LoadMainFile() { return Load(program_.sourceDirectory, program_.sourceFileName, 0); }

  private:
    bool IsAborted() const { return compilation_.states.Current() == CompileState::Aborted; }

    SourceLine* LineOrNone(std::int32_t lineNo) {
        return lineNo == 0 ? nullptr : &compilation_.GetSourceLine(lineNo);
    }

    /// A file that is being read already would include itself without end.
    bool IsBeingRead(const std::string& normalPath) const {
        return std::find(openPaths_.begin(), openPaths_.end(), normalPath) != openPaths_.end();
    }

    bool MustNotBeOpened(const std::string& normalPath) const {
        return openPaths_.size() == kMaxOpenFiles || compilation_.files.size() == kMaxFiles ||
               IsBeingRead(normalPath);
    }

    bool Load(const std::string& directory, const std::string& fileName,
              std::int32_t includingLineNo) {
        const std::string path = PathOf(directory, fileName);
        const std::string normalPath = std::filesystem::path(path).lexically_normal().string();
        if (MustNotBeOpened(normalPath)) {
            foundCircle_ = true;
            compilation_.diagnostics.PostAboutFile(MessageCode::IncludedTooDeep,
                                                   LineOrNone(includingLineNo), fileName);
            return false;
        }
        const bool isNew = pathsRead_.insert(normalPath).second;
        if (foundCircle_ && !isNew) return false;
        compilation_.diagnostics.LogSourceFileOpen(path);
        FileContent content = Read(directory, fileName, path);
        if (content.status != FileContent::Status::Read) {
            // That a file is not there the message says itself.
            const bool isThere = content.status == FileContent::Status::Failed;
            compilation_.diagnostics.PostAboutFile(MessageCode::FileNotOpened,
                                                   LineOrNone(includingLineNo), fileName,
                                                   isThere ? content.problem : std::string());
            return false;
        }
        SourceFile& file =
            compilation_.files.emplace_back(SourceFile{fileName, directory, {}, includingLineNo});
        file.text = DecodeText(std::move(content.bytes), &file.replaced);
        openPaths_.push_back(normalPath);
        LoadLines(file);
        openPaths_.pop_back();
        return true;
    }

    /// Reads the file, or the one that the user names in place of a missing one.
    FileContent Read(const std::string& directory, const std::string& fileName, std::string path) {
        for (;;) {
            FileContent content = compilation_.environment.files.Read(path);
            if (content.status != FileContent::Status::NotFound) return content;
            std::optional<std::string> picked = compilation_.environment.prompts.FindMissingFile(
                "Cannot Find " + fileName, directory, fileName);
            if (!picked) return content;
            path = std::move(*picked);
        }
    }

    void LoadLines(const SourceFile& file) {
        ReserveLines(file.text);
        LineSplitter lines(file.text);
        std::int32_t fileLineNo = 0;
        const bool mayBeForeign = !file.replaced.empty() || !IsAscii(file.text);
        while (!IsAborted()) {
            const std::optional<std::string_view> text = lines.Next();
            if (!text) return;
            SourceLine& line = compilation_.sourceLines.emplace_back();
            line.text = *text;
            line.file = &file;
            line.fileLineNo = ++fileLineNo;
            line.mayBeForeign = mayBeForeign;
            line.lineNumber = static_cast<std::int32_t>(compilation_.sourceLines.size());
            LoadLine(line);
            compilation_.environment.progress.LetEventsRun();
        }
    }

    void LoadLine(SourceLine& line) {
        const std::int32_t lineNo = line.lineNumber;
        if (const auto included = ParseDeclares(compilation_, line)) {
            const std::string fileName = ToUtf8(*included);
            Load(FolderOfIncluded(fileName), fileName, lineNo);
        }
    }

    /// What is not in the folder for included files may lie beside the main file, where whoever
    /// opens a program looks first.
    const std::string& FolderOfIncluded(const std::string& fileName) const {
        const auto isThere = [&](const std::string& directory) {
            return compilation_.environment.files.Read(PathOf(directory, fileName)).status ==
                   FileContent::Status::Read;
        };
        const bool isOneFolder = program_.includeDirectory == program_.sourceDirectory;
        if (isOneFolder || isThere(program_.includeDirectory)) return program_.includeDirectory;
        return isThere(program_.sourceDirectory) ? program_.sourceDirectory
                                                 : program_.includeDirectory;
    }

    void ReserveLines(std::string_view text) {
        const auto lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
        const std::size_t wanted = compilation_.sourceLines.size() + lines + 1;
        if (wanted <= compilation_.sourceLines.capacity()) return;
        compilation_.sourceLines.reserve(std::max(wanted, 2 * compilation_.sourceLines.size()));
    }

    Compilation& compilation_;
    const ProgramFiles& program_;
    std::vector<std::string> openPaths_;
    std::unordered_set<std::string> pathsRead_;
    /// Files that include each other in circles make more paths than can be followed. After the
    /// first circle no file is read a second time.
    bool foundCircle_ = false;
};

}  // namespace

bool LoadSourceFiles(Compilation& compilation, const ProgramFiles& program) {
    return SourceLoader(compilation, program).LoadMainFile();
}

}  // namespace zentro
