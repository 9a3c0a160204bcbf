#include "ui/board/world_commands.h"

#include <QDir>
#include <QFileInfo>
#include <QPrinter>
#include <utility>

#include "ui/board/floor_picture.h"
#include "ui/board/print_world.h"
#include "ui/support/dialogs.h"

namespace zentro {

namespace {

constexpr const char* kFilters = "Worlds|*.world|All Files (*.*)|*.*";

}  // namespace

WorldCommands::WorldCommands(Workbench& workbench, VirtualBoardHost& host, WorldDocument& document,
                             Surroundings surroundings, QObject* parent)
    : QObject(parent),
      workbench_(workbench),
      host_(host),
      document_(document),
      surroundings_(std::move(surroundings)) {}

void WorldCommands::Open(QWidget* asking, const QString& path) {
    if (!MayLeave(asking)) return;
    const QString problem = document_.Open(path);
    if (problem.isEmpty()) return;
    workbench_.dialogs.ShowMessage(
        asking,
        tr("%1 cannot be put on the floor: %2").arg(QDir::toNativeSeparators(path), problem));
}

void WorldCommands::ChooseAndOpen(QWidget* asking) {
    FileChoice choice;
    choice.title = tr("Open World");
    choice.folder = surroundings_.programFolder();
    choice.filters = kFilters;
    const std::optional<QString> path = workbench_.dialogs.ChooseFileToOpen(asking, choice);
    if (path && !path->isEmpty()) Open(asking, *path);
}

/// A shipped world stays as it is for the next user.
bool WorldCommands::Save(QWidget* asking) {
    if (document_.Path().isEmpty() || document_.IsShipped()) return SaveAs(asking);
    const QString problem = document_.Save(document_.Path());
    if (problem.isEmpty()) return true;
    workbench_.dialogs.ShowMessage(
        asking, tr("%1 was not saved: %2").arg(QFileInfo(document_.Path()).fileName(), problem));
    return false;
}

bool WorldCommands::SaveAs(QWidget* asking) {
    FileChoice choice;
    choice.title = tr("Save World As");
    choice.folder = surroundings_.programFolder();
    choice.suggestedName = QFileInfo(document_.Path()).fileName();
    choice.filters = kFilters;
    choice.defaultSuffix = "world";
    const std::optional<QString> path = workbench_.dialogs.ChooseFileToSave(asking, choice);
    if (!path || path->isEmpty()) return false;
    const QString problem =
        QFileInfo(*path).absoluteDir() == QDir(document_.ShippedFolder())
            ? tr("The shipped worlds lie in this folder and stay as they are: choose another one.")
            : document_.Save(*path);
    if (problem.isEmpty()) return true;
    workbench_.dialogs.ShowMessage(
        asking, tr("%1 was not saved: %2").arg(QFileInfo(*path).fileName(), problem));
    return false;
}

void WorldCommands::PrintAtTrueScale(QWidget* asking) {
    QPrinter printer(QPrinter::HighResolution);
    if (!workbench_.dialogs.SetUpPrinter(asking, printer)) return;
    const world::WorldMap& map = *host_.World().map;
    const SheetCount sheets = SheetsFor(printer, map);
    const QString question =
        tr("The floor takes %1 sheets, %2 side by side and %3 below each other. Print them?")
            .arg(sheets.Total())
            .arg(sheets.across)
            .arg(sheets.down);
    if (workbench_.dialogs.AskYesNo(asking, question)) PrintWorld(printer, map);
}

bool WorldCommands::Change(QWidget* asking, const world::World& world) {
    const QString problem = document_.Change(world);
    if (problem.isEmpty()) return true;
    workbench_.dialogs.ShowMessage(asking, tr("That cannot be: %1").arg(problem));
    return false;
}

void WorldCommands::StartHere(QWidget* asking) {
    world::World world = document_.World();
    world.start = host_.World().state.robot;
    Change(asking, world);
}

void WorldCommands::ChooseFloorPicture(QWidget* asking) {
    FileChoice choice;
    choice.title = tr("Floor Picture");
    choice.folder = surroundings_.programFolder();
    choice.filters = kPictureFilters;
    const std::optional<QString> path = workbench_.dialogs.ChooseFileToOpen(asking, choice);
    if (!path || path->isEmpty()) return;
    world::World world = document_.World();
    LoadedPicture loaded = LoadFloorPicture(*path, world.floor);
    if (!loaded.problem.isEmpty())
        return workbench_.dialogs.ShowMessage(
            asking, tr("%1 was not laid on the floor: %2")
                        .arg(QDir::toNativeSeparators(*path), loaded.problem));
    world.picture = std::move(loaded.picture);
    Change(asking, world);
}

void WorldCommands::RemoveFloorPicture(QWidget* asking) {
    world::World world = document_.World();
    world.picture = {};
    Change(asking, world);
}

QString WorldCommands::Rememberer() const {
    return surroundings_.programName ? surroundings_.programName() : QString();
}

void WorldCommands::Remember(QWidget* asking) {
    if (document_.IsChanged() && !Save(asking)) return;
    const QFileInfo file(document_.Path());
    const bool isFound =
        document_.IsShipped() || file.absoluteDir() == QDir(surroundings_.programFolder());
    surroundings_.remember(isFound ? file.fileName() : file.absoluteFilePath());
}

bool WorldCommands::MayLeave(QWidget* asking) {
    if (!document_.IsChanged()) return true;
    const QString name = tr("%1 (world)").arg(document_.Name());
    switch (workbench_.dialogs.AskSaveChanges(asking, {name})) {
        case SaveAnswer::Save: return Save(asking);
        case SaveAnswer::Discard: return true;
        case SaveAnswer::Cancel: break;
    }
    return false;
}

}  // namespace zentro
