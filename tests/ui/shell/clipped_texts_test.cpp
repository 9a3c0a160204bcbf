// Every text on the screen can be read to its end, whatever the size of the screen.

#include <QAbstractButton>
#include <QCheckBox>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QRadioButton>
#include <QScrollArea>
#include <QToolButton>
#include <QTranslator>

#include "tests/ui/shell/main_window_fixture.h"
#include "ui/shell/source_files.h"

namespace zentro {
namespace {

/// Whether one can scroll to what a widget does not show.
bool IsScrolled(const QWidget& widget) {
    for (QWidget* parent = widget.parentWidget(); parent != nullptr;
         parent = parent->parentWidget()) {
        const auto* area = qobject_cast<QScrollArea*>(parent);
        if (area == nullptr) continue;
        if (area->horizontalScrollBarPolicy() != Qt::ScrollBarAlwaysOff) return true;
        const int left = widget.mapTo(area->viewport(), QPoint()).x();
        return left >= 0 && left + widget.width() <= area->viewport()->width();
    }
    return false;
}

bool IsWhole(const QWidget& widget) {
    return IsScrolled(widget) || widget.visibleRegion().boundingRect().contains(widget.rect());
}

/// Whether it is in a child window behind another one.
bool IsBehind(const QWidget& widget) {
    const QWidget* parent = &widget;
    while (parent != nullptr && qobject_cast<const QMdiSubWindow*>(parent) == nullptr)
        parent = parent->parentWidget();
    const auto* frame = qobject_cast<const QMdiSubWindow*>(parent);
    return frame != nullptr && frame->mdiArea()->activeSubWindow() != frame &&
           widget.visibleRegion().isEmpty();
}

QSize RoomForButton(const QAbstractButton& button) {
    const auto* tool = qobject_cast<const QToolButton*>(&button);
    const bool isPicture = tool != nullptr && !tool->icon().isNull() &&
                           tool->toolButtonStyle() == Qt::ToolButtonIconOnly;
    if (isPicture) return button.iconSize();
    QSize room = button.fontMetrics().size(Qt::TextShowMnemonic, button.text());
    const bool isBeside =
        tool == nullptr || tool->toolButtonStyle() == Qt::ToolButtonTextBesideIcon;
    if (!button.icon().isNull() && isBeside) room.rwidth() += button.iconSize().width() + 4;
    return room;
}

QSize RoomForLabel(const QLabel& label) {
    if (label.wordWrap()) return {0, label.heightForWidth(label.width())};
    if (Qt::mightBeRichText(label.text())) return label.sizeHint();
    // Its hint is of the smallest size that it had when the text came.
    return label.fontMetrics().size(Qt::TextShowMnemonic, label.text());
}

/// What each text needs that has less, for the test's report.
QStringList ClippedTexts(const QWidget& window) {
    QStringList clipped;
    const auto check = [&](const QWidget& widget, const QString& text, const QSize& room) {
        const bool fits = widget.width() >= room.width() && widget.height() >= room.height();
        if (text.isEmpty() || !widget.isVisible() || IsBehind(widget)) return;
        if (fits && IsWhole(widget)) return;
        const QRect seen = widget.visibleRegion().boundingRect();
        clipped += QString("%1 \"%2\" has %3x%4, shows %5x%6, needs %7x%8")
                       .arg(widget.objectName(), text)
                       .arg(widget.width())
                       .arg(widget.height())
                       .arg(seen.width())
                       .arg(seen.height())
                       .arg(room.width())
                       .arg(room.height());
    };
    for (const auto* button : window.findChildren<QAbstractButton*>())
        check(*button, button->text(), RoomForButton(*button));
    for (const auto* label : window.findChildren<QLabel*>())
        check(*label, label->text(), RoomForLabel(*label));
    return clipped;
}

/// A language in which everything takes a third more room.
class LongerLanguage : public QTranslator {
  public:
    bool isEmpty() const override { return false; }
    QString translate(const char*, const char* text, const char*, int) const override {
        const QString english = QString::fromUtf8(text);
        return english + QString(english.size() / 3, 'e');
    }
};

/// 1280 by 720, 1366 by 768 and 1920 by 1080 at their own size and at twice that, each without the
/// main window's title.
const std::vector<QSize> kScreens{{1280, 690}, {1366, 738}, {1920, 1050},
                                  {640, 330},  {683, 354},  {960, 510}};

class ClippedTextsTest : public MainWindowTest {
  protected:
    /// The whole main window at each size.
    void ExpectNoneAtAnySize(const char* what) {
        for (const QSize& size : kScreens) {
            window->resize(size);
            QTest::qWait(20);  // everything is laid out at least once
            QStringList clipped;
            const auto areNone = [&] { return (clipped = ClippedTexts(*window)).isEmpty(); };
            const bool fits = QTest::qWaitFor([&] { return window->size() == size && areNone(); });
            EXPECT_TRUE(fits) << window->width() << "x" << window->height();
            EXPECT_TRUE(clipped.isEmpty())
                << what << " at " << size.width() << "x" << size.height() << ":\n"
                << clipped.join('\n').toStdString();
        }
    }
    void ExpectNoneInAnyWindow() {
        ExpectNoneAtAnySize("start page");
        window->Files().OpenFile(ZENTRO_EXAMPLES_FOLDER, "line_follower.txt");
        ExpectNoneAtAnySize("source");
        Press(CommandId::Run);
        QTest::qWait(500);
        ExpectNoneAtAnySize("running robot");
        Press(CommandId::Stop);
        for (const char* button : {"BtnEdit", "AllInputs"}) {
            Child<QAbstractButton>(button)->click();
            ExpectNoneAtAnySize(button);
            Child<QAbstractButton>(button)->click();
        }
        Press(CommandId::Plot);
        ExpectNoneAtAnySize("plot");
        Child("frmPlot")->parentWidget()->close();
        Press(CommandId::Help);
        ExpectNoneAtAnySize("handbook");
        Press(CommandId::OpenComms);
        ExpectNoneAtAnySize("terminal");
    }
};

TEST_F(ClippedTextsTest, AreNowhereOnTheDesk) {
    ExpectNoneInAnyWindow();
}

TEST_F(ClippedTextsTest, AreNowhereInALongerLanguage) {
    LongerLanguage language;
    QCoreApplication::installTranslator(&language);
    KillAndRestart();
    ExpectNoneInAnyWindow();
}

}  // namespace
}  // namespace zentro
