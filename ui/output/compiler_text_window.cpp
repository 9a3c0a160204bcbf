#include "ui/output/compiler_text_window.h"

#include <QCloseEvent>
#include <QFontDatabase>
#include <QFontInfo>

#include "ui/support/colours.h"

namespace zentro {

namespace {

/// The editor's font, or the desktop's own of that size where its columns would not line up.
QFont FixedPitchFont(const SettingsStore& settings) {
    constexpr double kUsualSize = 9.75;
    const double wanted = AsNumber(settings.GetSetting(SettingNumber::EditorFontSize));
    const double size = wanted > 0 ? wanted : kUsualSize;
    QFont font(QString::fromStdString(AsText(settings.GetSetting(SettingNumber::EditorFontName))));
    font.setStyleHint(QFont::Monospace);
    font.setPointSizeF(size);
    if (QFontInfo(font).fixedPitch()) return font;
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fixed.setPointSizeF(size);
    return fixed;
}

}  // namespace

CompilerTextWindow::CompilerTextWindow(const Workbench& workbench, const PlaceSettings& place,
                                       QList<int> tabColumns, QWidget* parent)
    : QWidget(parent),
      workbench_(workbench),
      place_(place),
      tabColumns_(std::move(tabColumns)),
      view_(new CompilerTextView(this)) {}

void CompilerTextWindow::CopySelectedText() {
    view_->copy();
}

void CompilerTextWindow::PositionForm() {
    RestorePlace(*this, workbench_.settings, place_);
    isPlaced_ = true;
}

void CompilerTextWindow::SetFormColours() {
    const SettingsStore& settings = workbench_.settings;
    const auto colour = [&](SettingNumber number) {
        return ToColour(AsInteger(settings.GetSetting(number)), palette());
    };
    view_->SetColours(colour(SettingNumber::EditorTextColour),
                      colour(SettingNumber::EditorPageColour));
    view_->SetFontAndTabs(FixedPitchFont(settings), tabColumns_);
}

void CompilerTextWindow::closeEvent(QCloseEvent* event) {
    if (isPlaced_) RememberPlace(*this, workbench_.settings, place_);
    event->accept();
    emit FormClosing();
}

void CompilerTextWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) SetFormColours();
}

}  // namespace zentro
