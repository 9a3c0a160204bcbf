#include "ui/editor/outline_box.h"

#include <QAbstractItemView>
#include <QSignalBlocker>
#include <QWheelEvent>
#include <chrono>

#include "ui/editor/source_editor.h"

namespace zentro {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds kRest = 200ms;
/// A text that takes longer to read is read less often.
constexpr int kManyLines = 20000;
constexpr std::chrono::milliseconds kLongRest = 1000ms;

QString TextOf(const OutlineEntry& entry) {
    QString name = QString::fromStdString(entry.name);
    switch (entry.kind) {
        case OutlineKind::Routine: return OutlineBox::tr("Routine %1").arg(name);
        case OutlineKind::Event: return OutlineBox::tr("Event %1").arg(name);
        case OutlineKind::Table: return OutlineBox::tr("Table %1").arg(name);
        case OutlineKind::Program: return OutlineBox::tr("Program");
    }
    return name;
}

}  // namespace

OutlineBox::OutlineBox(SourceEditor& editor, const CommandCatalogue& commands, QWidget* parent)
    : QComboBox(parent), editor_(editor), commands_(commands) {
    setObjectName("cboOutline");
    setAccessibleName(tr("Routines, events and tables"));
    setToolTip(tr("Go to a routine, event or table (Ctrl+Shift+O)"));
    setPlaceholderText(tr("Routines, events and tables"));
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(10);
    setMaxVisibleItems(20);
    setFocusPolicy(Qt::ClickFocus);
    rest_.setSingleShot(true);
    connect(&rest_, &QTimer::timeout, this, &OutlineBox::ReadText);
    connect(&editor_, &SourceEditor::Edited, this,
            [this] { rest_.start(editor_.lines() > kManyLines ? kLongRest : kRest); });
    connect(&editor_, &SourceEditor::Loaded, this, [this] { rest_.start(0); });
    connect(&editor_, &SourceEditor::StatsChanged, this, &OutlineBox::FollowCaret);
    connect(this, &QComboBox::activated, this, [this](int index) {
        if (index < 0 || static_cast<std::size_t>(index) >= outline_.size()) return;
        emit LineChosen(outline_[static_cast<std::size_t>(index)].line);
    });
    ReadText();
}

void OutlineBox::ReadText() {
    rest_.stop();
    std::vector<OutlineEntry> outline = OutlineOf(commands_, editor_.TextBytes());
    if (outline != outline_ || count() == 0) {
        const QSignalBlocker silent(this);
        outline_ = std::move(outline);
        clear();
        for (const OutlineEntry& entry : outline_)
            addItem(TextOf(entry));
        setEnabled(!outline_.empty());
    }
    FollowCaret();
}

/// While the list is open it belongs to the user.
void OutlineBox::FollowCaret() {
    if (view()->isVisible()) return;
    const auto entry = EntryOfLine(outline_, editor_.CaretLine());
    const QSignalBlocker silent(this);
    setCurrentIndex(entry ? static_cast<int>(*entry) : -1);
}

void OutlineBox::showPopup() {
    ReadText();
    QComboBox::showPopup();
}

/// Whatever came of the list, the next key is for the text.
void OutlineBox::hidePopup() {
    const bool wasOpen = view()->isVisible();
    QComboBox::hidePopup();
    if (!wasOpen) return;
    editor_.setFocus();
    FollowCaret();
}

/// Who scrolls over the box does not want to leave the text's place.
void OutlineBox::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

}  // namespace zentro
