#pragma once

#include <QStringList>

#include "desktop/disk.h"
#include "settings/settings_store.h"

namespace zentro {

/// Paths that a setting keeps in order under the sub-keys "File1", "File2" and so on.
class KeptPaths {
  public:
    /// The settings outlive the object. At most `most` paths are kept.
    KeptPaths(SettingsStore& settings, SettingNumber number, int most);

    QStringList Paths() const;
    void SetPaths(const QStringList& paths);
    /// The path comes to the head; it stands once in the list.
    void AddFirst(const QString& path);

  private:
    SettingsStore& settings_;
    SettingNumber number_;
    int most_;
};

/// Those of the files that are there, or lie on a disk that does not answer.
QStringList PresentFiles(Disk& disk, const QStringList& paths);

/// The files' names, each with as many of its folders as tell it from the others: "count.txt", or
/// "robots/count.txt" where another is called so too.
QStringList ShortNames(const QStringList& paths);

/// The source files that were opened or saved last, the newest first.
KeptPaths RecentFiles(SettingsStore& settings);
/// The source files that were open when the program ended, in the order of their tabs.
KeptPaths SessionFiles(SettingsStore& settings);

}  // namespace zentro
