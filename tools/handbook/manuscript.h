#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zentro {

/// A piece of the handbook's manuscript. data/handbook/README.md describes how each is written.
struct Block {
    enum class Kind : std::uint8_t {
        Chapter,
        Section,
        Paragraph,
        List,
        Table,
        Program,
        Printed,     ///< what a terminal shows or what is typed there
        Words,       ///< the page of one or more entries of the configuration
        Message,     ///< the page of a message
        OtherWords,  ///< the table of the words of other languages that the configuration knows
        WordIndex,
        MessageTable,
        InstructionTable,
    };
    enum class Role : std::uint8_t {
        Example,
        Wrong,   ///< provokes the message of its page
        Mended,  ///< the same program put right
        File,    ///< what the next program includes
    };
    Kind kind = Kind::Paragraph;
    Role role = Role::Example;       ///< of a program
    std::string name;                ///< a title; the name of a file to include
    std::vector<std::string> lines;  ///< lines, items, rows or tokens
    std::string page;                ///< the token or message code of the page it stands on
    std::string place;               ///< "words.txt:12"
};

struct Manuscript {
    std::vector<Block> blocks;
    std::vector<std::string> problems;  ///< each with its place
};

/// Appends the blocks of a file of the manuscript.
void ReadManuscript(const std::string& fileName, std::string_view text, Manuscript& manuscript);

/// Reads the files "*.txt" of a folder in the order of their names.
Manuscript ReadManuscriptFolder(const std::string& folder);

/// The lines of a program as one text.
std::string ProgramText(const Block& program);

/// The pieces between separators, without the blanks around them.
std::vector<std::string> SplitTrimmed(std::string_view text, char separator);

}  // namespace zentro
