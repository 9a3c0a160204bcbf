#include "tools/handbook/handbook.h"

#include <map>
#include <set>
#include <span>

#include "config/encoding.h"
#include "config/text.h"
#include "tools/handbook/argument_text.h"
#include "tools/handbook/html.h"
#include "tools/handbook/message_line.h"
#include "tools/handbook/program_html.h"
#include "tools/handbook/tables.h"
#include "tools/handbook/word_index.h"

namespace zentro {

namespace {

using Kind = Block::Kind;

constexpr std::string_view kHead = R"(<!DOCTYPE html>
<html><head><meta charset="utf-8"><title>ZentroCompiler Handbook</title>
<style>
h1 { font-size: xx-large; margin-top: 24px; }
h2 { font-size: x-large; margin-top: 28px; margin-bottom: 6px; }
h3 { font-size: large; margin-top: 30px; margin-bottom: 4px; }
p, ul { margin-top: 4px; margin-bottom: 8px; }
pre { margin-top: 0px; margin-bottom: 0px; white-space: pre-wrap; }
td, th { text-align: left; vertical-align: top; }
h1, h2, h3 { break-after: avoid; }
pre, tr { break-inside: avoid; }
</style></head><body>
)";

class Page {
  public:
    Page(const InstructionConfiguration& language, const Manuscript& manuscript)
        : language_(language),
          blocks_(manuscript.blocks),
          references_(language, manuscript),
          keywords_(KeywordsOf(language.commands)) {
        handbook_.problems = manuscript.problems;
        otherWords_ = OtherWords(language, handbook_.problems);
        places_ = WordPlaces(language.commands, otherWords_);
    }

    Handbook Make() {
        Write(kHead);
        WriteContents();
        for (std::size_t i = 0; i < blocks_.size(); ++i)
            WriteBlock(i);
        Write("</body></html>\n");
        return std::move(handbook_);
    }

  private:
    void Write(std::string_view html) { handbook_.html += html; }
    void Report(const Block& block, const std::string& problem) {
        handbook_.problems.push_back(block.place + ": " + problem);
    }
    std::string TextOf(const Block& block, std::string_view text) {
        return references_.TextHtml(text, block.place, handbook_.problems);
    }

    void WriteContents() {
        Write("<h1>" + AnchorHtml("contents") + "ZentroCompiler Handbook</h1>\n<ul>\n");
        for (const Block& block : blocks_) {
            if (block.kind == Kind::Chapter)
                Write("<li><a href=\"#" + PlaceOfTitle(block.name) + "\">" +
                      EscapeHtml(block.name) + "</a></li>\n");
        }
        Write(
            "</ul>\n<p>Press F1 on a word in your program or on a message, and this book opens at "
            "its page. "
            "At the foot of this window you can look for any word, for those of other languages "
            "too.</p>\n");
    }

    void WriteBlock(std::size_t index) {
        const Block& block = blocks_[index];
        switch (block.kind) {
            case Kind::Chapter: return WriteChapter(index);
            case Kind::Section:
                return Write("<h2>" + AnchorHtml(PlaceOfTitle(block.name)) +
                             EscapeHtml(block.name) + "</h2>\n");
            case Kind::Paragraph: return Write("<p>" + TextOf(block, block.lines[0]) + "</p>\n");
            case Kind::List: return WriteList(block);
            case Kind::Table: return WriteTable(block);
            case Kind::Program: return WriteProgram(block);
            case Kind::Printed:
                return Write(BoxHtml(EscapeHtml(Trim(ProgramText(block))), "#e9e9ec"));
            case Kind::Words: return WriteWords(block);
            case Kind::Message: return WriteMessage(block);
            case Kind::OtherWords: return WriteOtherWords(block);
            case Kind::WordIndex: return Write(WordIndexHtml(places_, references_));
            case Kind::MessageTable: return WriteMessageTable(block);
            case Kind::InstructionTable: return Write(InstructionTableHtml());
        }
    }

    /// The title, and links to what stands in the chapter.
    void WriteChapter(std::size_t index) {
        const Block& chapter = blocks_[index];
        Write("<hr><h1>" + AnchorHtml(PlaceOfTitle(chapter.name)) + EscapeHtml(chapter.name) +
              "</h1>\n<p><a href=\"#contents\">Contents</a>");
        for (std::size_t i = index + 1; i < blocks_.size() && blocks_[i].kind != Kind::Chapter;
             ++i) {
            const Block& block = blocks_[i];
            if (block.kind == Kind::Section) {
                Write("<br>\n<a href=\"#" + PlaceOfTitle(block.name) + "\">" +
                      EscapeHtml(block.name) + "</a>");
            } else if (block.kind == Kind::Words || block.kind == Kind::Message) {
                for (const std::string& token : block.lines)
                    Write(" &nbsp; " + references_.LinkHtml(token));
            }
        }
        Write("</p>\n");
    }

    void WriteList(const Block& block) {
        Write("<ul>\n");
        for (const std::string& item : block.lines)
            Write("<li>" + TextOf(block, item) + "</li>\n");
        Write("</ul>\n");
    }

    /// The first row is the heading.
    void WriteTable(const Block& block) {
        Rows rows;
        for (const std::string& line : block.lines) {
            rows.emplace_back();
            for (const std::string& cell : SplitTrimmed(line, '|'))
                rows.back().push_back(TextOf(block, cell));
        }
        Write(TableHtml(rows));
    }

    void WriteProgram(const Block& block) {
        switch (block.role) {
            case Block::Role::Example: return WriteProgramBox(block, {"#f4f1e4"});
            case Block::Role::File:
                Write("<p>The file " + CodeHtml(block.name) + ":</p>\n");
                includable_[block.name] = ProgramText(block);
                return WriteProgramBox(block, {"#f4f1e4"});
            case Block::Role::Wrong: return WriteWrongProgram(block);
            case Block::Role::Mended:
                Write("<p><b>Mended:</b></p>\n");
                return WriteProgramBox(block, {"#e6f2e4"});
        }
    }

    void WriteWrongProgram(const Block& block) {
        const int line = LineOfMessage(language_, ProgramText(block), includable_, block.page);
        const std::string place =
            line == 0 ? "" : " (the message names line " + std::to_string(line) + ")";
        Write("<p><b>Wrong</b>" + place + "<b>:</b></p>\n");
        WriteProgramBox(block, {"#fae6e3", line});
    }

    void WriteProgramBox(const Block& block, const ProgramLook& look) {
        Write(ProgramHtml(block.lines, keywords_, look));
    }

    void WriteWords(const Block& block) {
        Write("<h3>");
        std::string title;
        std::string descriptions;
        std::string values;
        for (const std::string& token : block.lines) {
            const Command* entry = EntryOf(language_.commands, token);
            if (entry == nullptr) {
                Report(block, "the configuration has no entry " + token);
                continue;
            }
            Write(AnchorHtml(token) + AnchorsOf(*entry));
            if (!title.empty()) title += ", ";
            title += EscapeHtml(ToUtf8(entry->command));
            descriptions += DescriptionHtml(*entry);
            const std::string own = ValuesHtml(*entry);
            if (&token != &block.lines.front() && own != values)
                Report(block, "what stands on one page takes the same values");
            values = own;
        }
        Write(title + "</h3>\n" + descriptions + values);
    }

    /// The words together, and each of them that is explained here; each place only once.
    std::string AnchorsOf(const Command& entry) {
        std::string html;
        std::set<std::string> words{ToUtf8(entry.command)};
        for (const WordPlace& place : places_) {
            if (place.page == &entry) words.insert(place.word);
        }
        for (const std::string& word : words)
            html += WordAnchorsHtml(word);
        return html;
    }

    /// The table of the values that an entry takes; empty when it takes none.
    std::string ValuesHtml(const Command& entry) const {
        Rows rows{{"Value", "What may stand there"}};
        for (const StatementValue& value : ArgumentsOf(entry.id))
            rows.push_back(
                {EscapeHtml(std::string(value.name)), ArgumentHtml(language_.commands, value)});
        return rows.size() > 1 ? TableHtml(rows) : std::string();
    }

    static std::string_view KindOf(Severity severity) {
        switch (severity) {
            case Severity::Warning: return "warning";
            case Severity::Advice: return "advice";
            default: return "error";
        }
    }

    void WriteMessage(const Block& block) {
        const std::string& code = block.lines.front();
        const ErrorMessage* message = language_.messages.Find(code);
        if (message == nullptr) return Report(block, "the configuration has no message " + code);
        Write("<h3>" + WordAnchorsHtml(code) + code + ": " +
              std::string(KindOf(message->errorSeverity)) + "</h3>\n<p><i>" +
              EscapeHtml(ToUtf8(message->errorMsg)) + "</i></p>\n");
    }

    /// F1 on a word and the search for it lead to its row; for a word of this language to its page.
    void WriteOtherWords(const Block& block) {
        Rows rows{{"Elsewhere", "Here"}};
        for (const OtherWord& other : otherWords_) {
            if (references_.HasPlace(other.word)) Report(block, other.word + " is a title as well");
            const std::string anchors = other.isOwn ? "" : WordAnchorsHtml(other.word);
            rows.push_back({anchors + CodeHtml(other.word), TextOf(block, other.text)});
        }
        Write(TableHtml(rows));
    }

    void WriteMessageTable(const Block& block) {
        if (block.lines.size() != 2) return Report(block, "@messages needs two codes");
        Write(MessageTableHtml(language_.messages, block.lines[0], block.lines[1]));
    }

    const InstructionConfiguration& language_;
    std::span<const Block> blocks_;
    References references_;
    std::vector<OtherWord> otherWords_;
    std::vector<WordPlace> places_;
    Keywords keywords_;
    std::map<std::string, std::string> includable_;  ///< files of the manuscript so far
    Handbook handbook_;
};

}  // namespace

Handbook MakeHandbook(const InstructionConfiguration& language, const Manuscript& manuscript) {
    return Page(language, manuscript).Make();
}

}  // namespace zentro
