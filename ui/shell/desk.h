#pragma once

#include <QMdiArea>
#include <QPointer>
#include <QTimer>
#include <vector>

#include "settings/settings_store.h"
#include "ui/shell/desk_layout.h"
#include "ui/support/window_place.h"

class QMdiSubWindow;

namespace zentro {

/// The area of the child windows. It gives each of them a place, so that none covers another, until
/// the user moves or sizes a window: from then on the place is the user's, and is kept in the
/// settings. While no window is open it shows a page of its own.
class Desk : public QMdiArea {
    Q_OBJECT

  public:
    /// The settings outlive the desk. The page becomes the desk's; null: none.
    Desk(SettingsStore& settings, QWidget* startPage, QWidget* parent);
    ~Desk() override;

    /// Shows a window in a frame of its own, which goes when the window is closed.
    void Add(QWidget* window);
    /// Shows a window that is covered or minimised, without giving it the focus.
    void Uncover(QWidget& window);
    /// From window to window in the order in which they were opened.
    void ActivateNext();
    /// Takes all windows back from where the user put them.
    void ArrangeAsWorkspace();
    /// Keeps the places that the user chose. A window that is closed keeps its own.
    void SavePlaces();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    struct Child {
        QMdiSubWindow* frame = nullptr;
        QWidget* window = nullptr;
        DeskPart part = DeskPart::Tool;
        const PlaceSettings* place = nullptr;
        QRect given;              ///< by the desk
        bool isUsers = false;     ///< the user chose its place
        bool isChanging = false;  ///< between maximised, minimised and neither
    };

    Child* ChildOf(const QObject* windowOrFrame);
    void PositionForm(Child& child);
    void NoteMoved(Child& child);
    void LayOut();
    void TakeColours();

    SettingsStore& settings_;
    QPointer<QWidget> startPage_;
    std::vector<Child> children_;
    QTimer later_;
    bool isLayingOut_ = false;
};

}  // namespace zentro
