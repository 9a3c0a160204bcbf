#include "tools/handbook/manuscript.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

#include "config/file.h"
#include "config/text.h"

namespace zentro {

namespace {

using Kind = Block::Kind;
using Role = Block::Role;

constexpr std::string_view kIndent = "    ";

class Reader {
  public:
    Reader(std::string fileName, Manuscript& manuscript)
        : fileName_(std::move(fileName)), manuscript_(manuscript) {}

    void ReadLine(std::string_view line) {
        ++lineNo_;
        if (line.starts_with(kIndent)) return AddProgramLine(line.substr(kIndent.size()));
        if (line.empty()) return EndBlock();
        blankLines_ = 0;
        if (line.starts_with("# ")) return AddTitle(Kind::Chapter, line.substr(2));
        if (line.starts_with("## ")) return AddTitle(Kind::Section, line.substr(3));
        if (line.starts_with("@")) return ReadDirective(line.substr(1));
        if (line.starts_with("> ")) return AddLine(Kind::Printed, line.substr(2));
        if (line.starts_with("- ")) return AddLine(Kind::List, line.substr(2));
        if (line.starts_with("| ")) return AddLine(Kind::Table, line.substr(2));
        if (line.starts_with("  ") && open_ == Kind::List)
            return AppendTo(Last(Kind::List).lines.back(), Trim(line));
        Block& paragraph = Last(Kind::Paragraph);
        if (paragraph.lines.empty()) paragraph.lines.emplace_back();
        AppendTo(paragraph.lines.back(), line);
    }

  private:
    static void AppendTo(std::string& text, std::string_view more) {
        if (!text.empty()) text += ' ';
        text += more;
    }

    Block& Add(Kind kind) {
        Block block;
        block.kind = kind;
        block.page = page_;
        block.place = fileName_ + ":" + std::to_string(lineNo_);
        open_ = kind;
        isOpen_ = true;
        return manuscript_.blocks.emplace_back(std::move(block));
    }

    /// The block that goes on, or a new one.
    Block& Last(Kind kind) {
        return isOpen_ && open_ == kind ? manuscript_.blocks.back() : Add(kind);
    }

    void AddLine(Kind kind, std::string_view line) { Last(kind).lines.emplace_back(line); }

    /// A blank line inside a program belongs to it.
    void EndBlock() {
        if (isOpen_ && open_ == Kind::Program) {
            ++blankLines_;
        } else {
            isOpen_ = false;
        }
    }

    void AddProgramLine(std::string_view line) {
        const bool goesOn = isOpen_ && open_ == Kind::Program;
        Block& program = Last(Kind::Program);
        if (!goesOn) {
            blankLines_ = 0;
            NameProgram(program);
        }
        program.lines.insert(program.lines.end(), blankLines_, "");
        program.lines.emplace_back(line);
        blankLines_ = 0;
    }

    void NameProgram(Block& program) {
        if (!includedName_.empty()) {
            program.role = Role::File;
            program.name = std::exchange(includedName_, {});
        } else if (isMessagePage_) {
            program.role = isMended_ ? Role::Mended : Role::Wrong;
        }
    }

    void AddTitle(Kind kind, std::string_view title) {
        page_.clear();
        isMessagePage_ = false;
        Add(kind).name = title;
        isOpen_ = false;
    }

    void ReadDirective(std::string_view text) {
        const std::size_t blank = std::min(text.find(' '), text.size());
        const std::string_view name = text.substr(0, blank);
        const std::string_view rest = Trim(text.substr(blank));
        if (name.empty()) return BeginPage(rest);
        if (name == "file") {
            includedName_ = rest;
        } else if (name == "mended" || name == "wrong") {
            isMended_ = name == "mended";
        } else if (name == "other-words") {
            Add(Kind::OtherWords);
        } else if (name == "index") {
            Add(Kind::WordIndex);
        } else if (name == "messages") {
            Add(Kind::MessageTable).lines = SplitTrimmed(rest, ' ');
        } else if (name == "instructions") {
            Add(Kind::InstructionTable);
        } else {
            manuscript_.problems.push_back(fileName_ + ":" + std::to_string(lineNo_) + ": @" +
                                           std::string(name) + " is not known");
        }
        isOpen_ = false;
    }

    void BeginPage(std::string_view tokens) {
        page_ = SplitTrimmed(tokens, ' ').front();
        isMessagePage_ = FoldCase(page_.front()) == 'E';
        isMended_ = false;
        Add(isMessagePage_ ? Kind::Message : Kind::Words).lines = SplitTrimmed(tokens, ' ');
        isOpen_ = false;
    }

    std::string fileName_;
    Manuscript& manuscript_;
    int lineNo_ = 0;
    bool isOpen_ = false;
    Kind open_ = Kind::Paragraph;
    std::size_t blankLines_ = 0;
    std::string page_;
    bool isMessagePage_ = false;
    bool isMended_ = false;
    std::string includedName_;
};

}  // namespace

void ReadManuscript(const std::string& fileName, std::string_view text, Manuscript& manuscript) {
    Reader reader(fileName, manuscript);
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        reader.ReadLine(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

Manuscript ReadManuscriptFolder(const std::string& folder) {
    Manuscript manuscript;
    std::vector<std::filesystem::path> paths;
    std::error_code failed;
    for (std::filesystem::directory_iterator entry(folder, failed), end; !failed && entry != end;
         entry.increment(failed)) {
        if (entry->path().extension() == ".txt") paths.push_back(entry->path());
    }
    if (failed) manuscript.problems.push_back(folder + ": " + failed.message());
    std::ranges::sort(paths);
    for (const auto& path : paths) {
        const FileContent content = ReadWholeFile(path.string());
        if (content.status != FileContent::Status::Read)
            manuscript.problems.push_back(path.string() + ": " + content.problem);
        ReadManuscript(path.filename().string(), content.bytes, manuscript);
    }
    return manuscript;
}

std::string ProgramText(const Block& program) {
    std::string text;
    for (const std::string& line : program.lines)
        text += line + "\n";
    return text;
}

std::vector<std::string> SplitTrimmed(std::string_view text, char separator) {
    std::vector<std::string> pieces;
    do {
        const std::size_t end = std::min(text.find(separator), text.size());
        pieces.emplace_back(Trim(text.substr(0, end)));
        text.remove_prefix(std::min(end + 1, text.size()));
    } while (!text.empty());
    return pieces;
}

}  // namespace zentro
