#include "ui/shell/desk.h"

#include <QAction>
#include <QMdiSubWindow>
#include <QMenu>
#include <QScopedValueRollback>
#include <QWindowStateChangeEvent>
#include <algorithm>
#include <array>
#include <string_view>

namespace zentro {

namespace {

/// A kind of child window, by the name of its class of windows.
struct DeskRow {
    std::string_view name;
    DeskPart part;
    PlaceSettings place;
};

constexpr std::array kRows{
    DeskRow{"frmSource", DeskPart::Source, kSourceWindowPlace},
    DeskRow{"frmObjectCode", DeskPart::Listing, kObjectWindowPlace},
    DeskRow{"frmCompilerOutput", DeskPart::Output, kOutputWindowPlace},
    DeskRow{"frmTerminal", DeskPart::Terminal, kTerminalWindowPlace},
    DeskRow{"frmVirtualBoard", DeskPart::Board, kBoardWindowPlace},
    DeskRow{"frmVariables", DeskPart::Variables, kVariablesWindowPlace},
    DeskRow{"frmPlot", DeskPart::Plot, kPlotWindowPlace},
    DeskRow{"frmBrowser", DeskPart::Help, kHelpWindowPlace},
    DeskRow{"frmCalc", DeskPart::Tool, kCalculatorPlace},
};

const DeskRow* RowOf(const QWidget& window) {
    const std::string name = window.objectName().toStdString();
    const auto* row = std::ranges::find(kRows, name, &DeskRow::name);
    return row == kRows.end() ? nullptr : row;
}

bool IsOnDesk(const QMdiSubWindow& frame) {
    return !frame.isHidden() && !frame.isMinimized();
}

/// Whether the frame was or is minimised or maximised, rather than made active.
bool ChangesSize(const QMdiSubWindow& frame, const QEvent& event) {
    const auto& change = static_cast<const QWindowStateChangeEvent&>(event);
    const Qt::WindowStates changed = change.oldState() ^ frame.windowState();
    return (changed & (Qt::WindowMinimized | Qt::WindowMaximized)) != 0;
}

}  // namespace

Desk::Desk(SettingsStore& settings, QWidget* startPage, QWidget* parent)
    : QMdiArea(parent), settings_(settings), startPage_(startPage) {
    if (startPage_ != nullptr) startPage_->setParent(viewport());
    // Whoever closes a window goes on where they were before.
    setActivationOrder(ActivationHistoryOrder);
    TakeColours();
    later_.setSingleShot(true);
    connect(&later_, &QTimer::timeout, this, &Desk::LayOut);
}

/// What is left of the windows must not tell a desk that is half gone.
Desk::~Desk() {
    for (const Child& child : children_)
        child.frame->disconnect(&later_);
}

void Desk::Add(QWidget* window) {
    window->setAttribute(Qt::WA_DeleteOnClose);
    QMdiSubWindow* frame = addSubWindow(window);
    frame->setWindowIcon(window->windowIcon());
    // The frame's own shortcuts would stand in the way of those of the menus.
    for (QAction* action : frame->systemMenu()->actions())
        action->setShortcut({});
    frame->show();
    Child child;
    child.frame = frame;
    child.window = window;
    if (const DeskRow* row = RowOf(*window)) {
        child.part = row->part;
        child.place = &row->place;
    }
    PositionForm(child);
    children_.push_back(child);
    frame->installEventFilter(this);
    window->installEventFilter(this);
    // The area cuts its own connections with a frame that goes.
    connect(frame, &QObject::destroyed, &later_, [this, frame] {
        std::erase_if(children_, [&](const Child& each) { return each.frame == frame; });
        later_.start();
    });
    LayOut();
}

/// A place that the user once chose is the user's again.
void Desk::PositionForm(Child& child) {
    if (child.place == nullptr || IsFactoryPlace(settings_, *child.place)) {
        if (child.part != DeskPart::Tool) return;
        QRect place = child.frame->geometry();
        place.moveCenter(viewport()->rect().center());
        child.frame->setGeometry(place);
        return;
    }
    RestorePlace(*child.window, settings_, *child.place);
    child.isUsers = true;
}

void Desk::Uncover(QWidget& window) {
    Child* child = ChildOf(&window);
    if (child == nullptr) return;
    if (child->frame->isMinimized()) child->frame->showNormal();
    child->frame->raise();
}

void Desk::ActivateNext() {
    const QList<QMdiSubWindow*> frames = subWindowList(CreationOrder);
    const qsizetype present = frames.indexOf(activeSubWindow());
    for (qsizetype step = 1; step <= frames.size(); ++step) {
        QMdiSubWindow* next = frames[(present + step) % frames.size()];
        if (next->isHidden()) continue;
        setActiveSubWindow(next);
        return;
    }
}

void Desk::ArrangeAsWorkspace() {
    for (const DeskRow& row : kRows)
        ForgetPlace(settings_, row.place);
    for (Child& child : children_) {
        child.isUsers = false;
        if (child.frame->isMinimized() || child.frame->isMaximized()) child.frame->showNormal();
    }
    LayOut();
}

void Desk::SavePlaces() {
    for (const Child& child : children_) {
        if (child.isUsers && child.place != nullptr)
            RememberPlace(*child.window, settings_, *child.place);
    }
}

Desk::Child* Desk::ChildOf(const QObject* windowOrFrame) {
    const auto child = std::ranges::find_if(children_, [&](const Child& each) {
        return each.frame == windowOrFrame || each.window == windowOrFrame;
    });
    return child == children_.end() ? nullptr : &*child;
}

bool Desk::eventFilter(QObject* watched, QEvent* event) {
    Child* child = ChildOf(watched);
    if (child == nullptr) return QMdiArea::eventFilter(watched, event);
    const bool isFrame = watched == child->frame;
    switch (event->type()) {
        case QEvent::Move:
        case QEvent::Resize:
            if (isFrame) NoteMoved(*child);
            break;
        case QEvent::Close:
            if (!isFrame && child->isUsers && child->place != nullptr)
                RememberPlace(*child->window, settings_, *child->place);
            break;
        case QEvent::WindowStateChange:
            if (!isFrame || !ChangesSize(*child->frame, *event)) break;
            child->isChanging = true;
            later_.start();
            break;
        case QEvent::Hide:
        case QEvent::Show:
            if (isFrame) later_.start();
            break;
        default: break;
    }
    return QMdiArea::eventFilter(watched, event);
}

/// What moves a window other than the desk is the user, also by a command such as tiling.
void Desk::NoteMoved(Child& child) {
    const QMdiSubWindow& frame = *child.frame;
    if (isLayingOut_ || child.isChanging || frame.isHidden() || frame.isMinimized() ||
        frame.isMaximized())
        return;
    if (frame.geometry() != child.given) child.isUsers = true;
}

void Desk::LayOut() {
    later_.stop();
    if (startPage_ != nullptr) {
        startPage_->setGeometry(viewport()->rect());
        const bool isEmpty = std::ranges::none_of(
            children_, [](const Child& child) { return !child.frame->isHidden(); });
        startPage_->setVisible(isEmpty);
    }
    const QScopedValueRollback guard(isLayingOut_, true);
    // Only what the user placed can lie outside.
    const bool mayScroll = std::ranges::any_of(children_, &Child::isUsers);
    for (const auto set : {&Desk::setHorizontalScrollBarPolicy, &Desk::setVerticalScrollBarPolicy})
        (this->*set)(mayScroll ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
    std::set<DeskPart> open;
    for (const Child& child : children_) {
        if (IsOnDesk(*child.frame) && !child.isUsers) open.insert(child.part);
    }
    const std::map<DeskPart, QRect> places = LayOutDesk(viewport()->rect(), open);
    for (Child& child : children_) {
        child.isChanging = false;
        const auto place = places.find(child.part);
        if (place == places.end() || child.isUsers || child.frame->isMaximized() ||
            !IsOnDesk(*child.frame))
            continue;
        child.frame->setGeometry(place->second);
        child.given = child.frame->geometry();
    }
}

bool Desk::viewportEvent(QEvent* event) {
    const bool isDone = QMdiArea::viewportEvent(event);
    if (event->type() == QEvent::Resize) LayOut();
    return isDone;
}

void Desk::TakeColours() {
    setBackground(palette().color(QPalette::Window).darker(112));
}

void Desk::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange) TakeColours();
    QMdiArea::changeEvent(event);
}

}  // namespace zentro
