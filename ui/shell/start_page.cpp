#include "ui/shell/start_page.h"

#include <QBoxLayout>
#include <QDir>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QScrollArea>
#include <QToolButton>
#include <algorithm>
#include <utility>

#include "desktop/example_programs.h"
#include "desktop/recent_files.h"
#include "desktop/text_file.h"
#include "ui/support/icons.h"

namespace zentro {

namespace {

constexpr QSize kPictureSize{48, 48};
constexpr QSize kIconSize{20, 20};
constexpr int kMostExamplesInRow = 4;
constexpr int kMostRecentShown = 6;

/// The scale of all distances, in pixels.
constexpr int kSmall = 4;
constexpr int kMedium = 8;
constexpr int kLarge = 24;

/// Shows which one the keys are for, which flat buttons do not.
class StartButton : public QToolButton {
  public:
    /// A file that says in a sentence what it is, which is read when somebody points at the button.
    void SetExplainedBy(const QString& path) { path_ = path; }

  protected:
    bool event(QEvent* event) override {
        if (event->type() == QEvent::ToolTip && !path_.isEmpty() && toolTip().isEmpty())
            setToolTip(FirstSentence(QString::fromStdString(LoadText(path_).file.text)));
        return QToolButton::event(event);
    }

    void paintEvent(QPaintEvent* event) override {
        QToolButton::paintEvent(event);
        if (!hasFocus()) return;
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), kSmall, kSmall);
    }

  private:
    QString path_;
};

QLabel* MakeHeading(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    QFont font = label->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.1);
    label->setFont(font);
    return label;
}

}  // namespace

StartPage::StartPage(Actions actions, const QString& examplesFolder,
                     std::function<QStringList()> recentFiles,
                     std::function<QStringList()> sessionFiles)
    : actions_(std::move(actions)),
      recentFiles_(std::move(recentFiles)),
      sessionFiles_(std::move(sessionFiles)) {
    setObjectName("StartPage");
    setAutoFillBackground(true);
    area_ = new QScrollArea(this);
    area_->setWidgetResizable(true);
    area_->setFrameShape(QFrame::NoFrame);
    area_->setFocusPolicy(Qt::NoFocus);
    auto* page = new QWidget;
    auto* columns = new QHBoxLayout;
    columns->setSpacing(2 * kLarge);
    columns->addStretch(1);
    left_ = new QWidget;
    auto* left = new QVBoxLayout(left_);
    left->setContentsMargins(0, 0, 0, 0);
    left->setSpacing(kLarge);
    left->addWidget(MakeBeginnings());
    left->addWidget(MakeRecent());
    left->addStretch(1);
    columns->addWidget(left_);
    columns->addWidget(MakeExamples(examplesFolder), 0, Qt::AlignTop);
    columns->addStretch(1);
    auto* rows = new QVBoxLayout(page);
    rows->setContentsMargins(kLarge, kLarge, kLarge, kLarge);
    rows->addStretch(1);
    rows->addLayout(columns);
    rows->addStretch(2);
    area_->setWidget(page);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(area_);
}

QToolButton* StartPage::AddButton(QBoxLayout& layout, const QString& name, const QString& text,
                                  const QString& icon, std::function<void()> action) {
    auto* button = new StartButton;
    button->setObjectName(name);
    button->setText(text);
    button->setAccessibleName(QString(text).remove('&'));
    button->setIcon(ThemedIcon(icon));
    button->setIconSize(kIconSize);
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    // The page goes when the first window opens: its buttons are not to be in the middle of a
    // click then.
    connect(button, &QToolButton::clicked, this, std::move(action), Qt::QueuedConnection);
    layout.addWidget(button);
    return button;
}

QWidget* StartPage::MakeBeginnings() {
    auto* group = new QWidget;
    auto* rows = new QVBoxLayout(group);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(kSmall);
    rows->addWidget(MakeHeading(tr("Begin"), group));
    AddButton(*rows, "StartNew", tr("New program"), "file-new", actions_.newProgram);
    AddButton(*rows, "StartLesson", tr("First lesson"), "help", actions_.firstLesson);
    AddButton(*rows, "StartOpen", tr("Open a program …"), "file-open", actions_.open);
    AddButton(*rows, "StartBoard", tr("Open the virtual board"), "virtual-board",
              actions_.openBoard);
    return group;
}

QWidget* StartPage::MakeRecent() {
    recent_ = new QWidget;
    auto* rows = new QVBoxLayout(recent_);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(kSmall);
    rows->addWidget(MakeHeading(tr("Recent programs"), recent_));
    recentRows_ = new QVBoxLayout;
    recentRows_->setSpacing(kSmall);
    rows->addLayout(recentRows_);
    return recent_;
}

QWidget* StartPage::MakeExamples(const QString& folder) {
    auto* group = new QWidget;
    auto* rows = new QVBoxLayout(group);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(kMedium);
    rows->addWidget(MakeHeading(tr("Examples"), group));
    exampleGrid_ = new QGridLayout;
    exampleGrid_->setSpacing(kMedium);
    for (const ExampleProgram& example : ExamplesIn(folder)) {
        auto* button = new StartButton;
        button->setObjectName("StartExample_" + example.name);
        button->setText(example.title);
        button->SetExplainedBy(example.path);
        button->setAccessibleName(tr("Example: %1").arg(example.title));
        button->setIcon(ExampleIcon(example.name));
        button->setIconSize(kPictureSize);
        button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::StrongFocus);
        button->setMinimumWidth(button->fontMetrics().horizontalAdvance("Joystick drive mm"));
        connect(
            button, &QToolButton::clicked, this,
            [this, path = example.path] { actions_.openFile(path); }, Qt::QueuedConnection);
        examples_.push_back(button);
    }
    rows->addLayout(exampleGrid_);
    group->setVisible(!examples_.empty());
    return group;
}

/// As many in a row as the width has room for, so that nobody must scroll sideways.
void StartPage::PlaceExamples() {
    if (examples_.empty()) return;
    int width = 0;
    for (const QToolButton* example : examples_)
        width = std::max({width, example->minimumWidth(), example->sizeHint().width()});
    const int room = area_->viewport()->width() - left_->sizeHint().width() - 4 * kLarge;
    const int columns = std::clamp((room + kMedium) / (width + kMedium), 1, kMostExamplesInRow);
    if (columns == exampleColumns_) return;
    exampleColumns_ = columns;
    for (std::size_t i = 0; i < examples_.size(); ++i) {
        const int place = static_cast<int>(i);
        exampleGrid_->addWidget(examples_[i], place / columns, place % columns);
    }
}

void StartPage::ShowRecent() {
    while (QLayoutItem* item = recentRows_->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    const QStringList session = sessionFiles_();
    if (session.size() > 1) {
        AddButton(*recentRows_, "StartSession",
                  tr("All %1 files of the last time").arg(session.size()), "file-open",
                  [this, session] { actions_.openFiles(session); });
    }
    const QStringList recent = recentFiles_().mid(0, kMostRecentShown);
    const QStringList names = ShortNames(recent);
    for (qsizetype i = 0; i < recent.size(); ++i) {
        const QString& path = recent[i];
        QToolButton* button = AddButton(*recentRows_, QString("StartRecent%1").arg(i + 1), names[i],
                                        "file-open", [this, path] { actions_.openFile(path); });
        button->setToolTip(QDir::toNativeSeparators(path));
    }
    recent_->setVisible(recentRows_->count() > 0);
}

void StartPage::showEvent(QShowEvent* event) {
    ShowRecent();
    PlaceExamples();
    QWidget::showEvent(event);
    if (auto* first = findChild<QToolButton*>("StartNew")) first->setFocus();
}

void StartPage::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    PlaceExamples();
}

/// Return does what a click does.
void StartPage::keyPressEvent(QKeyEvent* event) {
    auto* button = qobject_cast<QToolButton*>(focusWidget());
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (button != nullptr && isReturn) return button->click();
    QWidget::keyPressEvent(event);
}

}  // namespace zentro
