#include "desktop/recent_files.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <string>

namespace zentro {

namespace {

constexpr int kMostRecent = 8;
constexpr int kMostOfSession = 30;

std::string SubKey(int number) {
    return "File" + std::to_string(number);
}

}  // namespace

KeptPaths::KeptPaths(SettingsStore& settings, SettingNumber number, int most)
    : settings_(settings), number_(number), most_(most) {}

QStringList KeptPaths::Paths() const {
    QStringList paths;
    for (int i = 1; i <= most_; ++i) {
        const QString path =
            QString::fromStdString(AsText(settings_.GetSetting(number_, SubKey(i))));
        if (path.isEmpty()) break;
        paths += path;
    }
    return paths;
}

void KeptPaths::SetPaths(const QStringList& paths) {
    for (int i = 1; i <= most_; ++i) {
        const std::string key = SubKey(i);
        const std::string path = paths.value(i - 1).toStdString();
        if (AsText(settings_.GetSetting(number_, key)) != path)
            settings_.SaveSetting(number_, path, key);
    }
}

void KeptPaths::AddFirst(const QString& path) {
    QStringList paths = Paths();
    paths.removeAll(path);
    paths.prepend(path);
    SetPaths(paths);
}

QStringList ShortNames(const QStringList& paths) {
    const auto end = [](const QString& path, int parts) { return path.section('/', -parts); };
    QStringList names;
    for (const QString& path : paths) {
        int parts = 1;
        const auto isShared = [&](const QString& other) {
            return other != path && end(other, parts) == end(path, parts);
        };
        while (parts <= path.count('/') && std::ranges::any_of(paths, isShared))
            ++parts;
        names += QDir::toNativeSeparators(end(path, parts));
    }
    return names;
}

QStringList PresentFiles(Disk& disk, const QStringList& paths) {
    QStringList present;
    for (const QString& path : paths) {
        const auto isThere =
            disk.Ask(path, Patience::Short, [path] { return QFileInfo::exists(path); });
        if (isThere.value_or(true)) present += path;
    }
    return present;
}

KeptPaths RecentFiles(SettingsStore& settings) {
    return {settings, SettingNumber::RecentFiles, kMostRecent};
}

KeptPaths SessionFiles(SettingsStore& settings) {
    return {settings, SettingNumber::SessionFiles, kMostOfSession};
}

}  // namespace zentro
