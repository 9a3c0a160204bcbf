#include "ui/board/world_menu.h"

#include <QPainter>
#include <QProxyStyle>
#include <algorithm>

#include "config/file.h"
#include "desktop/text_file.h"
#include "ui/board/world_painter.h"
#include "world/load_world.h"

namespace zentro {

namespace {

constexpr int kPictureWidth = 80;
constexpr int kPictureHeight = 54;
constexpr int kPenSize = 16;

/// Pictures of worlds are larger than icons.
class LargeIcons : public QProxyStyle {
  public:
    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override {
        return metric == PM_SmallIconSize ? kPictureWidth
                                          : QProxyStyle::pixelMetric(metric, option, widget);
    }
};

QIcon PictureOf(const world::WorldMap& map, const QWidget& widget) {
    const double ratio = widget.devicePixelRatioF();
    QPixmap picture(QSize(kPictureWidth, kPictureHeight) * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    const world::Floor& floor = map.world.floor;
    constexpr double kMargin = 2;
    const double scale = std::min((kPictureWidth - 2 * kMargin) / floor.width,
                                  (kPictureHeight - 2 * kMargin) / floor.height);
    painter.translate(kPictureWidth / 2.0, kPictureHeight / 2.0);
    painter.scale(scale, -scale);
    painter.translate(-floor.width / 2, -floor.height / 2);
    PaintWorld(painter, map, widget.palette());
    PaintRobot(painter, map, map.world.start, {});
    return picture;
}

}  // namespace

WorldMenu::WorldMenu(WorldCommands& commands, QWidget* parent)
    : QMenu(parent), commands_(commands) {
    setObjectName("WorldMenu");
    auto* style = new LargeIcons;
    style->setParent(this);
    setStyle(style);
    connect(this, &QMenu::aboutToShow, this, &WorldMenu::Fill);
}

void WorldMenu::AddShipped(const QString& path) {
    const world::LoadedWorld loaded =
        world::LoadWorld(ReadWholeFile(SystemPath(path), world::kMostBytes).bytes);
    if (!loaded.error.empty()) return;
    QIcon& picture = pictures_[path];
    if (picture.isNull()) picture = PictureOf(world::MakeMap(loaded.world), *this);
    QAction* action = addAction(picture, QString::fromStdString(loaded.world.name));
    action->setIconVisibleInMenu(true);
    action->setCheckable(true);
    action->setChecked(path == commands_.Document().Path());
    connect(action, &QAction::triggered, this,
            [this, path] { commands_.Open(parentWidget(), path); });
}

/// With which the robot draws its way.
void WorldMenu::AddPens() {
    QMenu* pens = addMenu(tr("P&en"));
    pens->setObjectName("PenMenu");
    const auto add = [this, pens](Pen pen, const QString& text) {
        QPixmap picture(kPenSize, kPenSize);
        picture.fill(ColourOf(pen));
        QAction* action = pens->addAction(picture, text);
        action->setCheckable(true);
        action->setChecked(commands_.Host().Trail().TakenPen() == pen);
        connect(action, &QAction::triggered, this, [this, pen] { commands_.Host().TakePen(pen); });
    };
    add(Pen::None, tr("&No Pen"));
    add(Pen::Orange, tr("&Orange"));
    add(Pen::Blue, tr("&Blue"));
    add(Pen::Green, tr("&Green"));
    add(Pen::Red, tr("&Red"));
    pens->addSeparator();
    pens->addAction(tr("&Wipe Off the Way"), this, [this] { commands_.Host().WipeTrail(); });
}

void WorldMenu::Fill() {
    // Its submenu goes with it.
    delete findChild<QMenu*>("PenMenu");
    clear();
    for (const QString& path : commands_.Document().ShippedWorlds())
        AddShipped(path);
    addSeparator();
    addAction(tr("&Open World..."), this, [this] { commands_.ChooseAndOpen(parentWidget()); });
    addAction(tr("&Save World"), this, [this] {
        commands_.Save(parentWidget());
    })->setEnabled(commands_.Document().IsChanged());
    addAction(tr("Save World &As..."), this, [this] { commands_.SaveAs(parentWidget()); });
    addSeparator();
    addAction(tr("&Floor Picture..."), this,
              [this] { commands_.ChooseFloorPicture(parentWidget()); });
    addAction(tr("Remove Floor Pict&ure"), this, [this] {
        commands_.RemoveFloorPicture(parentWidget());
    })->setEnabled(!commands_.Document().World().picture.shades.empty());
    AddPens();
    addAction(tr("&Print at True Scale..."), this,
              [this] { commands_.PrintAtTrueScale(parentWidget()); });
    if (const QString name = commands_.Rememberer(); !name.isEmpty())
        addAction(tr("Let %1 &Remember This World").arg(name), this,
                  [this] { commands_.Remember(parentWidget()); });
}

}  // namespace zentro
