#include "desktop/world_document.h"

#include <QDir>
#include <QFileInfo>
#include <utility>

#include "config/file.h"
#include "desktop/text_file.h"
#include "desktop/virtual_board_host.h"
#include "world/load_world.h"
#include "world/save_world.h"

namespace zentro {

namespace {

constexpr std::size_t kMostUndo = 500;
constexpr const char* kFirstWorld = "oval.world";

std::shared_ptr<const world::WorldMap> MapOf(world::World world) {
    return std::make_shared<const world::WorldMap>(world::MakeMap(std::move(world)));
}

}  // namespace

WorldDocument::WorldDocument(VirtualBoardHost& host, QString shippedFolder, QObject* parent)
    : QObject(parent),
      host_(host),
      shippedFolder_(std::move(shippedFolder)),
      path_(QDir(shippedFolder_).filePath(kFirstWorld)),
      map_(host.World().map),
      saved_(map_) {}

QString WorldDocument::Name() const {
    if (!World().name.empty()) return QString::fromStdString(World().name);
    return path_.isEmpty() ? tr("World without a name") : QFileInfo(path_).completeBaseName();
}

bool WorldDocument::IsShipped() const {
    return !path_.isEmpty() && QFileInfo(path_).absoluteDir() == QDir(shippedFolder_);
}

QStringList WorldDocument::ShippedWorlds() const {
    const QDir folder(shippedFolder_);
    QStringList names = folder.entryList({"*.world"}, QDir::Files, QDir::Name);
    if (names.removeOne(kFirstWorld)) names.prepend(kFirstWorld);
    for (QString& name : names)
        name = folder.filePath(name);
    return names;
}

QString WorldDocument::Open(const QString& path) {
    FileContent file = ReadWholeFile(SystemPath(path), world::kMostBytes);
    if (file.status != FileContent::Status::Read) return QString::fromStdString(file.problem);
    world::LoadedWorld loaded = world::LoadWorld(file.bytes);
    if (!loaded.error.empty()) return QString::fromStdString(loaded.error);
    Enter(path, std::move(file.bytes), MapOf(std::move(loaded.world)));
    return {};
}

void WorldDocument::EnterWithoutFile(Map map) {
    Enter({}, {}, std::move(map));
}

void WorldDocument::Enter(const QString& path, std::string text, Map map) {
    path_ = path;
    fileText_ = std::move(text);
    map_ = std::move(map);
    saved_ = map_;
    undo_.clear();
    redo_.clear();
    host_.EnterWorld(map_);
    emit Changed();
}

QString WorldDocument::Enter(const QString& path) {
    if (QFileInfo(path) != QFileInfo(path_)) return Open(path);
    if (IsChanged() || IsShipped()) return {};
    const FileContent file = ReadWholeFile(SystemPath(path), world::kMostBytes);
    return file.bytes == fileText_ ? QString() : Open(path);
}

/// What can be saved and read again can be worked with.
QString WorldDocument::Change(const world::World& world) {
    world::LoadedWorld checked = world::LoadWorld(world::SaveWorld(world));
    if (!checked.error.empty()) return QString::fromStdString(checked.error);
    if (checked.world == World()) return {};
    undo_.push_back(map_);
    if (undo_.size() > kMostUndo) undo_.erase(undo_.begin());
    redo_.clear();
    Show(MapOf(std::move(checked.world)));
    return {};
}

void WorldDocument::Undo() {
    if (undo_.empty()) return;
    redo_.push_back(map_);
    Map before = std::move(undo_.back());
    undo_.pop_back();
    Show(std::move(before));
}

void WorldDocument::Redo() {
    if (redo_.empty()) return;
    undo_.push_back(map_);
    Map after = std::move(redo_.back());
    redo_.pop_back();
    Show(std::move(after));
}

void WorldDocument::Show(Map map) {
    map_ = std::move(map);
    host_.ChangeWorld(map_);
    emit Changed();
}

QString WorldDocument::Save(const QString& path) {
    std::string text = world::SaveWorld(World());
    const std::string problem = WriteWholeFile(SystemPath(path), text);
    if (!problem.empty()) return QString::fromStdString(problem);
    path_ = path;
    fileText_ = std::move(text);
    saved_ = map_;
    emit Changed();
    return {};
}

}  // namespace zentro
