#pragma once

#include <QObject>
#include <QString>
#include <memory>
#include <string>
#include <vector>

#include "world/world_map.h"

namespace zentro {

class VirtualBoardHost;

/// The world on the floor of the virtual board: its file, what was changed in it since, and the way
/// back. The robot goes on driving while its world changes.
class WorldDocument : public QObject {
    Q_OBJECT

  public:
    /// The first world lies on the floor. The host outlives the document. Files in the shipped
    /// folder are never written.
    WorldDocument(VirtualBoardHost& host, QString shippedFolder, QObject* parent = nullptr);

    const world::World& World() const { return map_->world; }
    /// What people call it.
    QString Name() const;
    /// Of its file; empty: it was never saved.
    const QString& Path() const { return path_; }
    bool IsShipped() const;
    /// The files of the shipped worlds, the first world first.
    QStringList ShippedWorlds() const;
    const QString& ShippedFolder() const { return shippedFolder_; }

    /// Puts the world of a file on the floor, the robot at its start. What was changed in the one
    /// before is gone. Returns what is wrong with the file; empty: nothing.
    QString Open(const QString& path);
    /// The same, but a file that is already on the floor stays there as it is unless somebody else
    /// has changed it.
    QString Enter(const QString& path);

    /// Puts a world on the floor that comes with something else: it has no file of its own, and
    /// nothing of it is lost without a save.
    void EnterWithoutFile(std::shared_ptr<const world::WorldMap> map);

    /// Takes over a changed world, as LoadWorld would. Returns what is wrong with it; empty: it was
    /// taken over, and can be taken back.
    QString Change(const world::World& world);
    bool CanUndo() const { return !undo_.empty(); }
    bool CanRedo() const { return !redo_.empty(); }
    void Undo();
    void Redo();

    /// Whether something would be lost without a save.
    bool IsChanged() const { return map_ != saved_; }
    /// Writes it to a file, which is its own from then on. Returns why not; empty: it was written.
    QString Save(const QString& path);

  signals:
    void Changed();

  private:
    using Map = std::shared_ptr<const world::WorldMap>;

    void Enter(const QString& path, std::string text, Map map);
    void Show(Map map);

    VirtualBoardHost& host_;
    QString shippedFolder_;
    QString path_;
    std::string fileText_;  ///< as it was read or written last
    Map map_;
    Map saved_;
    std::vector<Map> undo_;
    std::vector<Map> redo_;
};

}  // namespace zentro
