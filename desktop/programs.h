#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "desktop/disk.h"
#include "desktop/line_moves.h"
#include "desktop/program_report.h"

namespace zentro {

struct CompiledProgram;

/// Names an open file for as long as it is open; no other file of this run gets the same.
enum class FileId : std::uint32_t {};

/// How an open file compares with what was read from the disk or written there last.
enum class DiskState : std::uint8_t {
    Same,
    Gone,    ///< deleted or moved by somebody else
    Differs  ///< changed by somebody else, and not taken over
};

struct OpenFile {
    FileId id{};
    QString folder;  ///< empty while the file was never saved
    QString name;    ///< "NewFile1" while it was never saved
    QString key;     ///< the same for every spelling of its path; the name without one
    Revision revision = 0;
    Revision savedRevision = 0;
    DiskState disk = DiskState::Same;

    bool NeverSaved() const { return folder.isEmpty(); }
    /// Whether something would be lost without a save.
    bool IsChanged() const { return revision != savedRevision || disk != DiskState::Same; }
    QString Path() const;  ///< of a file that was never saved: its name
};

/// The open files and the programs that they belong to: the one place that knows which file is in
/// front and which is the main file, what is saved, what the messages of each program are and what
/// was compiled last. Windows read it and are told with Changed that something is different.
class Programs : public QObject {
    Q_OBJECT

  public:
    using TextOf = std::function<QString()>;

    /// The disk outlives the programs.
    explicit Programs(Disk& disk, QObject* parent = nullptr);
    ~Programs() override;

    /// A file was opened, or with an empty folder begun; it comes to the end of the tabs and to the
    /// front. `text` gives its text as it stands in its editor, until it is removed.
    FileId Add(const QString& folder, const QString& name, TextOf text);
    /// Tells with Closing that the file goes, and takes it out.
    void Remove(FileId id);

    /// Where the files lie.
    Disk& FileDisk() const { return disk_; }
    /// FileKey, or while the disk does not answer what it was last.
    QString KeyOf(const QString& folder, const QString& name) const;

    /// In the order of the tabs.
    const std::vector<OpenFile>& Files() const { return files_; }
    /// Null when it is not open any more.
    const OpenFile* File(FileId id) const;
    /// The open file with that path, however it is spelt; null: none.
    const OpenFile* Find(const QString& path) const;
    QString Text(FileId id) const;
    /// The text of an open file as it stands in its editor, for a path or the name of a new file.
    std::optional<QString> OpenText(const QString& pathOrName) const;

    /// What was read of a file, by the key that it had then.
    using ReadTexts = std::map<QString, Revision>;
    /// The open file of which a text was read under that key, whatever it has been saved as since;
    /// null: it is not open.
    const OpenFile* OpenedAs(const QString& keyThen, Revision read) const;
    /// What was read of the file, which may have had another key then; end: nothing.
    ReadTexts::const_iterator ReadOf(const ReadTexts& texts, const OpenFile& file) const;
    /// Of the file that the program begins with, which may have been saved under another one since.
    QString NameNow(const CompiledProgram& program) const;

    /// The source file that was in front last, which may have other windows before it now; null
    /// when no file is open.
    const OpenFile* Front() const;
    void SetFront(FileId id);
    /// The file to compile that was chosen; null: none.
    const OpenFile* Main() const;
    void SetMain(std::optional<FileId> id);

    /// The text was edited, or an edit undone.
    /// The revision is a new one at once; Changed comes when the editor is done.
    void NoteEdited(FileId id);
    /// Undoing or redoing has led back to the saved text.
    void NoteAtSavedText(FileId id);
    /// An edit is about to take lines out, or an undo. Tells it with LinesGoing. It comes before
    /// that is noted.
    void NoteLinesGoing(FileId id);
    /// Edits were undone or redone, and their moves of lines noted. A text that lines had gone from
    /// and that is back has its revision again, and it is told with TextIsBack.
    void NoteUndone(FileId id);
    /// The edit that was noted last has put lines in or taken lines out. Tells it with LinesMoved.
    void NoteLinesMoved(FileId id, const LineMove& move);
    /// Where a line stands now of the text that was read with that revision; nothing: it was taken
    /// out since.
    std::optional<int> LineNow(const OpenFile& file, int line, Revision read) const;
    /// Where a line stood in that text; nothing: it was put in since.
    std::optional<int> LineThen(const OpenFile& file, int line, Revision read) const;
    /// The text was written to this file, or read anew from it.
    void NoteSaved(FileId id, const QString& folder, const QString& name);
    void SetDisk(FileId id, DiskState state);

    /// The key of the file that the program of this file begins with: the chosen file if it
    /// includes this one, another open one that does, as far as reports tell; otherwise the file
    /// itself.
    QString RootOf(const OpenFile& file) const;

    /// A report takes the place of the one before about the same program.
    void SetReport(ProgramReport report);
    const ProgramReport* ReportOf(const QString& root) const;
    /// Whether the last report about the program that begins with this file is about its texts as
    /// they stand.
    bool IsFresh(const OpenFile& root) const;
    /// Nothing is known of any program any more.
    void ForgetReports();
    /// The messages against the lines of the file; nothing when none were found for the text as it
    /// stands. Those that were found before stand at the lines that they were about until then.
    std::optional<std::vector<LineMessage>> MessagesOf(const OpenFile& file) const;
    /// The line, or else the next one that has code, as far as is known; nothing: none has.
    std::optional<int> LineWithCode(const OpenFile& file, int line) const;
    /// What the program of the file declares.
    std::vector<ProgramName> NamesFor(const OpenFile& file) const;

    /// The program was compiled. One that failed leaves what was compiled before, but that it is
    /// out of date.
    void SetCompiled(std::shared_ptr<const CompiledProgram> program);
    /// The newest object code of the program that begins with this file; null: none of this run.
    std::shared_ptr<const CompiledProgram> CompiledFrom(const QString& root) const;
    /// The program of this run whose object file has that content; null: none.
    std::shared_ptr<const CompiledProgram> CompiledAs(const std::string& objectText) const;
    /// What was compiled last, of whichever program; null: nothing yet.
    std::shared_ptr<const CompiledProgram> LastCompiled() const { return last_; }
    /// Whether the texts of the program are those that it was compiled from.
    bool IsUpToDate(const CompiledProgram& program) const;

  signals:
    void Changed();
    /// The file is being closed; its text can still be read.
    void Closing(FileId id);
    void LinesMoved(zentro::FileId id, const zentro::LineMove& move);
    /// The text and its revision are still those with the lines.
    void LinesGoing(zentro::FileId id);
    void TextIsBack(zentro::FileId id, zentro::Revision revision);

  private:
    /// What has happened to the lines of a file since it was opened, by revisions.
    struct Moves {
        Revision lastEdit = 0;
        std::vector<std::pair<Revision, LineMove>> moves;
        std::map<std::size_t, Revision> texts;      ///< by hash, which lines have gone from
        std::map<Revision, std::size_t> movesThen;  ///< how many there were when a text came back

        /// The first that came after the text with that revision.
        std::size_t FirstAfter(Revision read) const;
    };

    /// A file was saved under another name than the one that it had.
    struct SavedAs {
        QString keyBefore;
        FileId id{};
        Revision last = 0;  ///< of all texts then
    };

    OpenFile* Find(FileId id);
    std::size_t TextHash(FileId id) const;
    void AskForKeys();

    Disk& disk_;
    mutable std::map<QString, QString> keys_;  ///< by path, as the disk said last
    std::vector<OpenFile> files_;
    std::map<FileId, TextOf> texts_;
    std::map<FileId, Moves> moves_;
    std::vector<SavedAs> savedAs_;  ///< in their order
    std::optional<FileId> front_;
    std::optional<FileId> main_;
    std::map<QString, ProgramReport> reports_;  ///< by root
    std::map<QString, std::shared_ptr<const CompiledProgram>> compiled_;
    std::shared_ptr<const CompiledProgram> last_;
    std::uint32_t lastId_ = 0;
    Revision lastRevision_ = 0;
    std::uint64_t lastSerial_ = 0;
    QTimer later_;
};

/// The keys of the files as the programs tell them, which outlive it.
inline FileKeys KeysOf(const Programs& programs) {
    return [&programs](const QString& folder, const QString& name) {
        return programs.KeyOf(folder, name);
    };
}

}  // namespace zentro
