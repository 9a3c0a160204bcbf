#include "ui/dialogs/recovery_dialog.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalBlocker>
#include <QTextCursor>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "config/file.h"
#include "desktop/text_file.h"
#include "ui/support/colours.h"
#include "ui/support/source_font.h"
#include "ui/support/workbench.h"

namespace zentro {

namespace {

constexpr std::size_t kContext = 3;
constexpr int kLongestShown = 5000;  // lines; a difference that long is not read to its end

const QColor kAddedColour(0, 110, 40);
const QColor kRemovedColour(180, 30, 30);

enum Column : std::uint8_t { NameColumn, TimeColumn, FirstLineColumn, FolderColumn };

QString SignOf(LineChange change) {
    switch (change) {
        case LineChange::Same: return "  ";
        case LineChange::Added: return "+ ";
        case LineChange::Removed: return "- ";
        case LineChange::LeftOut: return "⋯";
    }
    return {};
}

QTextCharFormat FormatOf(LineChange change, const QPalette& palette) {
    const QColor background = palette.color(QPalette::Base);
    QTextCharFormat format;
    format.setForeground(palette.color(QPalette::Text));
    if (change == LineChange::Added) format.setForeground(ReadableOn(kAddedColour, background));
    if (change == LineChange::Removed) format.setForeground(ReadableOn(kRemovedColour, background));
    if (change == LineChange::LeftOut) {
        format.setForeground(palette.color(QPalette::PlaceholderText));
    }
    return format;
}

constexpr qsizetype kLongestFirstLine = 60;  // characters in the list

/// What a text without a telling name is known by: its first line that is not blank.
QString FirstLineOf(const QString& text) {
    const QString start = text.trimmed();
    const QString line = start.section(QRegularExpression("[\\r\\n]"), 0, 0).simplified();
    return line.size() > kLongestFirstLine ? line.left(kLongestFirstLine) + "…" : line;
}

/// "3 lines added, 1 line removed."
QString CountChanges(const std::vector<DifferenceLine>& lines) {
    const auto count = [&](LineChange change) {
        return std::ranges::count(lines, change, &DifferenceLine::change);
    };
    const auto countText = [](std::ptrdiff_t number) {
        return QString::number(number) + (number == 1 ? " line" : " lines");
    };
    return countText(count(LineChange::Added)) + " added (+), " +
           countText(count(LineChange::Removed)) + " removed (-).";
}

}  // namespace

RecoveryDialog::RecoveryDialog(std::vector<UnsavedText> texts, Disk& disk, QWidget* parent)
    : QDialog(parent),
      disk_(disk),
      texts_(std::move(texts)),
      explanation_(new QLabel(this)),
      list_(new QTreeWidget(this)),
      summary_(new QLabel(this)),
      difference_(new QPlainTextEdit(this)) {
    setObjectName("RecoveryDialog");
    setWindowTitle(QString(kProgramTitle) + " - Recover Unsaved Texts");
    explanation_->setText(tr(
        "The program ended before these texts were saved. What you neither recover nor discard is "
        "offered again when the program starts next."));
    explanation_->setWordWrap(true);
    SetUpList();
    SetUpDifference();

    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(explanation_);
    layout->addWidget(list_, 1);
    layout->addWidget(summary_);
    layout->addWidget(difference_, 3);
    layout->addWidget(MakeButtons());
    resize(720, 520);
    FillList();
}

void RecoveryDialog::SetUpList() {
    list_->setObjectName("UnsavedList");
    list_->setAccessibleName(tr("Texts that were not saved"));
    list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list_->setRootIsDecorated(false);
    list_->setHeaderLabels({tr("File"), tr("Last kept"), tr("First line"), tr("Folder")});
    connect(list_, &QTreeWidget::currentItemChanged, this, &RecoveryDialog::ShowDifference);
    connect(list_, &QTreeWidget::itemSelectionChanged, this, [this] {
        const bool any = !list_->selectedItems().isEmpty();
        recover_->setEnabled(any);
        discard_->setEnabled(any);
    });
}

void RecoveryDialog::SetUpDifference() {
    difference_->setObjectName("DifferenceView");
    difference_->setAccessibleName("What differs from the file on the disk");
    difference_->setReadOnly(true);
    difference_->setTabChangesFocus(true);
    difference_->setLineWrapMode(QPlainTextEdit::NoWrap);
    difference_->setFont(FixedFont());
    summary_->setObjectName("DifferenceSummary");
    summary_->setBuddy(difference_);
    summary_->setWordWrap(true);
}

QDialogButtonBox* RecoveryDialog::MakeButtons() {
    auto* const buttons = new QDialogButtonBox(this);
    recover_ = buttons->addButton(tr("&Recover"), QDialogButtonBox::AcceptRole);
    recoverAll_ = buttons->addButton(tr("Recover &All"), QDialogButtonBox::AcceptRole);
    discard_ = buttons->addButton(tr("&Discard"), QDialogButtonBox::DestructiveRole);
    discardAll_ = buttons->addButton(tr("Di&scard All"), QDialogButtonBox::DestructiveRole);
    QPushButton* const later = buttons->addButton(tr("&Later"), QDialogButtonBox::RejectRole);
    recover_->setObjectName("BtnRecover");
    recoverAll_->setObjectName("BtnRecoverAll");
    discard_->setObjectName("BtnDiscard");
    discardAll_->setObjectName("BtnDiscardAll");
    later->setObjectName("BtnLater");
    recoverAll_->setDefault(true);
    recover_->setToolTip(tr("Opens the selected texts."));
    recoverAll_->setToolTip(tr("Opens all texts of the list."));
    discard_->setToolTip(tr("The selected texts are not offered again."));
    discardAll_->setToolTip(tr("None of the texts is offered again."));
    later->setToolTip(tr("The texts are offered again when the program starts next."));
    connect(recover_, &QPushButton::clicked, this, &RecoveryDialog::Recover);
    connect(discard_, &QPushButton::clicked, this, &RecoveryDialog::Discard);
    for (auto [all, selected] :
         {std::pair(recoverAll_, recover_), std::pair(discardAll_, discard_)})
        connect(all, &QPushButton::clicked, this, [this, selected = selected] {
            list_->selectAll();
            selected->click();
        });
    connect(later, &QPushButton::clicked, this, &QDialog::reject);
    return buttons;
}

void RecoveryDialog::OfferOnlyRecovery() {
    setWindowTitle(QString(kProgramTitle) + " - Earlier Texts");
    explanation_->setText("These copies were kept before. Select those that you want back.");
    for (QPushButton* const button : {recoverAll_, discard_, discardAll_})
        button->hide();
    recover_->setDefault(true);
    list_->setSelectionMode(QAbstractItemView::SingleSelection);
    list_->clearSelection();
    list_->setCurrentItem(list_->topLevelItem(0));
    onlyOne_ = true;
}

void RecoveryDialog::FillList() {
    for (const UnsavedText& text : texts_) {
        const RecoveryCopy& copy = text.copy;
        auto* const item = new QTreeWidgetItem(list_);
        item->setText(NameColumn, copy.title);
        item->setText(TimeColumn,
                      QLocale().toString(copy.time.toLocalTime(), QLocale::ShortFormat));
        item->setText(FirstLineColumn, FirstLineOf(copy.text));
        item->setText(FolderColumn, copy.path.isEmpty() ? tr("(never saved)")
                                                        : QDir::toNativeSeparators(
                                                              QFileInfo(copy.path).absolutePath()));
    }
    list_->header()->setSectionResizeMode(NameColumn, QHeaderView::ResizeToContents);
    list_->header()->setSectionResizeMode(TimeColumn, QHeaderView::ResizeToContents);
    list_->header()->setSectionResizeMode(FirstLineColumn, QHeaderView::ResizeToContents);
    list_->setCurrentItem(list_->topLevelItem(0));
}

void RecoveryDialog::ShowDifference() {
    difference_->clear();
    summary_->clear();
    const int index = list_->indexOfTopLevelItem(list_->currentItem());
    if (index < 0) return;
    const RecoveryCopy& copy = texts_[static_cast<std::size_t>(index)].copy;
    const auto answer =
        disk_.Ask(copy.path, Patience::Short, [path = copy.path]() -> std::optional<LoadedText> {
            if (path.isEmpty()) return std::nullopt;
            // The crash may have come in the middle of a save.
            MendUnfinishedWrites(SystemPath(QFileInfo(path).path()));
            if (!QFileInfo::exists(path)) return std::nullopt;
            return LoadText(path);
        });
    const auto found = answer.value_or(LoadedText{{}, kNoAnswer});
    const bool isOnDisk = found.has_value();
    const LoadedText onDisk = found.value_or(LoadedText());
    const std::vector<DifferenceLine> lines =
        DifferenceOf(QString::fromStdString(onDisk.file.text), copy.text);
    QString state = "&Compared with the file on the disk: ";
    if (!isOnDisk) state = "&There is no such file on the disk: ";
    if (!onDisk.problem.empty())
        state = "&The file cannot be read (" + QString::fromStdString(onDisk.problem) + "): ";
    summary_->setText(state + CountChanges(lines));
    ShowLines(AroundChanges(lines, kContext));
}

void RecoveryDialog::ShowLines(const std::vector<DifferenceLine>& lines) {
    QTextCursor cursor(difference_->document());
    int shown = 0;
    for (const DifferenceLine& line : lines) {
        if (shown > 0) cursor.insertBlock();
        const bool isLast = ++shown > kLongestShown;
        const LineChange change = isLast ? LineChange::LeftOut : line.change;
        cursor.insertText(SignOf(change) + (isLast ? QString() : line.text),
                          FormatOf(change, palette()));
        if (isLast) break;
    }
    difference_->moveCursor(QTextCursor::Start);
}

std::vector<UnsavedText> RecoveryDialog::TakeSelected() {
    std::vector<UnsavedText> taken;
    for (int index = list_->topLevelItemCount() - 1; index >= 0; --index) {
        if (!list_->topLevelItem(index)->isSelected()) continue;
        const auto text = texts_.begin() + index;
        taken.insert(taken.begin(), std::move(*text));
        texts_.erase(text);
        const QSignalBlocker quiet(list_);
        delete list_->takeTopLevelItem(index);
    }
    return taken;
}

void RecoveryDialog::Recover() {
    // The oldest first: texts without a file get their names anew, and the newest comes to the
    // front.
    std::vector<UnsavedText> taken = TakeSelected();
    std::ranges::reverse(taken);
    for (const UnsavedText& text : taken)
        emit RecoverChosen(text);
    CloseWhenDone();
}

void RecoveryDialog::Discard() {
    for (const UnsavedText& text : TakeSelected()) {
        emit DiscardChosen(text);
    }
    CloseWhenDone();
}

void RecoveryDialog::CloseWhenDone() {
    if (texts_.empty() || onlyOne_) {
        accept();
        return;
    }
    list_->setCurrentItem(list_->topLevelItem(0));
    ShowDifference();
}

}  // namespace zentro
