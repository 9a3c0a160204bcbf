#pragma once

#include <QObject>
#include <QString>
#include <cstdint>
#include <map>
#include <vector>

#include "desktop/programs.h"

namespace zentro {

/// A line before which a program is to be held.
struct Breakpoint {
    QString file;          ///< its key
    int line = 0;          ///< from 1, in the text as it stands
    QString condition;     ///< as it was typed; empty: always
    std::uint32_t id = 0;  ///< no other of this run has the same

    bool operator==(const Breakpoint&) const = default;
};

/// The breakpoints of all files, open or not. They move with their lines, and with their file when
/// it gets another name. One whose line is taken out is back when that is undone.
class Breakpoints : public QObject {
    Q_OBJECT

  public:
    /// The programs outlive the object.
    explicit Breakpoints(Programs& programs, QObject* parent = nullptr);

    const std::vector<Breakpoint>& All() const { return all_; }
    /// Null: there is none.
    const Breakpoint* At(const QString& file, int line) const;

    /// What came of a wish for a breakpoint.
    struct Toggled {
        enum class What : std::uint8_t { Set, Removed, NoCode };

        What what = What::Set;
        int line = 0;  ///< where it stands: the next one with code
    };
    /// Sets a breakpoint or takes it away.
    Toggled Toggle(const OpenFile& file, int line);
    /// There must be one.
    void SetCondition(const QString& file, int line, const QString& condition);
    /// One whose line has turned out to have no code goes to another line.
    void Move(const QString& file, int from, int to);
    void Clear();

  signals:
    void Changed();

  private:
    void FollowNames();
    void MoveLines(FileId id, const LineMove& move);
    void KeepPlaces(FileId id);
    void BringBack(FileId id, Revision revision);
    void Forget(FileId id);

    /// What is needed to undo edits of a file.
    struct Past {
        std::map<Revision, std::map<std::uint32_t, int>> places;  ///< lines by id, in earlier texts
        std::vector<Breakpoint> gone;                             ///< with their lines
    };

    const Programs& programs_;
    std::vector<Breakpoint> all_;
    std::uint32_t lastId_ = 0;
    std::map<FileId, Past> past_;
    std::map<FileId, QString> keys_;  ///< of the open files, as they were known last
};

}  // namespace zentro
