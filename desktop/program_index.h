#pragma once

#include <QCoreApplication>
#include <QString>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "compiler/name_uses.h"
#include "config/configuration.h"
#include "desktop/programs.h"
#include "settings/settings_store.h"

namespace zentro {

/// A piece of a line. Columns count characters.
struct TextPlace {
    QString file;  ///< its key, by which it can be opened too
    int line = 0;  ///< from 1
    int column = 0;
    int length = 0;

    bool operator==(const TextPlace&) const = default;
};

/// A name of a program with all its places.
struct IndexedName {
    struct Place : TextPlace {
        ParentId seenFrom{};  ///< whose own names come first here
    };

    QString name;  ///< as it is declared
    NameKind kind = NameKind::Variable;
    ParentId parent{};
    TextPlace declaration;
    std::vector<Place> places;  ///< in the order of reading, each once

    std::size_t FileCount() const;
};

/// Every place of every name of a program, as its texts were when it was read.
class ProgramIndex {
    Q_DECLARE_TR_FUNCTIONS(zentro::ProgramIndex)

  public:
    /// Reads the program that begins with the file, with the texts of open files as they stand.
    ProgramIndex(const InstructionConfiguration& configuration, const OpenFile& root,
                 const SettingsStore& settings, const Programs& programs);

    const std::vector<IndexedName>& Names() const { return names_; }
    /// The name with a place at the column, or right before it; null: none.
    const IndexedName* NameAt(const QString& file, int line, int column) const;
    /// The file that the line includes; empty: none, or one that cannot be read.
    QString IncludedAt(const QString& file, int line) const;
    /// What keeps some of the program's names from being seen, a sentence; empty: all is seen.
    const QString& Gap() const { return gap_; }
    /// Whether the open files of the program have the texts that were read.
    bool IsFresh(const Programs& programs) const;
    const QString& Root() const { return root_; }
    std::size_t LineCount() const { return lineCount_; }

  private:
    /// A place in a file, and the number of the name that stands there.
    struct Entry {
        int line = 0;
        int column = 0;
        int length = 0;
        std::size_t name = 0;
    };

    using Keys = std::map<const SourceFile*, QString>;

    void TakeFiles(const Compilation& compilation, const Keys& keys);
    void TakeNames(const Compilation& compilation, const NameUses& found, Keys keys);

    QString root_;
    std::vector<IndexedName> names_;
    std::map<QString, std::vector<Entry>> entries_;  ///< by file, in the order of its text
    std::map<std::pair<QString, int>, QString> includes_;
    std::map<QString, Revision> texts_;
    QString gap_;
    std::size_t lineCount_ = 0;
};

}  // namespace zentro
