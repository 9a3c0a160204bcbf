#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

#include "ui/dialogs/folder_chooser.h"
#include "ui/dialogs/options_pages.h"
#include "ui/support/colours.h"
#include "ui/support/dialogs.h"

namespace zentro {

namespace {

struct Switch {
    const char* name;
    const char* text;
    bool OptionsState::*on;
    const char* hint;
};

constexpr Switch kSwitches[] = {
    {"chkColourSource", "Show Source in Colour", &OptionsState::colourSource, ""},
    {"chkLoadLast", "Load last edited source file on opening", &OptionsState::loadLastSource, ""},
    {"chkShowObjectCode", "Show Object Code when compiling", &OptionsState::showObjectCode, ""},
    {"chkSaveB4CompileWarning", "Warn before saving source before compile",
     &OptionsState::saveWithoutAsking,
     "When this is ticked, a changed file is saved before a compile without the warning."},
    {"chkCheckWhileTyping", "Check the program while typing", &OptionsState::checkWhileTyping,
     "Marks mistakes in the source text a moment after each change."},
    {"chkShowAdvice", "Give advice about lines that are hardly meant so", &OptionsState::showAdvice,
     "Tells of what is legal and does something else than is meant, such as a routine never "
     "called."},
    {"chkReopenPort", "Open the terminal again when the cable is back",
     &OptionsState::reopenPortWhenBack,
     "When the port of an open terminal goes away and comes back, it is opened again."},
};

QLabel* MakeSample(const char* name, const QString& accessibleName, const QString& text) {
    auto* sample = new QLabel(text);
    sample->setObjectName(name);
    sample->setAccessibleName(accessibleName);
    sample->setAutoFillBackground(true);
    sample->setFrameShape(QFrame::StyledPanel);
    sample->setMargin(6);
    sample->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    sample->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    sample->setMinimumHeight(72);  // a larger font is cut off rather than the dialog stretched
    return sample;
}

void SetColours(QLabel& sample, std::int32_t back, std::int32_t text) {
    const QPalette desktop = sample.parentWidget()->palette();
    QPalette palette = desktop;
    palette.setColor(QPalette::Window, ToColour(back, desktop));
    palette.setColor(QPalette::WindowText, ToColour(text, desktop));
    sample.setPalette(palette);
}

QPushButton* MakeButton(const char* name, const QString& text, const QString& accessibleName) {
    auto* button = new QPushButton(text);
    button->setObjectName(name);
    button->setAccessibleName(accessibleName);
    button->setAutoDefault(false);
    return button;
}

QWidget* MakeSampleBox(const QString& title, QLabel* sample, const QList<QPushButton*>& buttons) {
    auto* box = new QGroupBox(title);
    auto* layout = new QGridLayout(box);
    const int columns = static_cast<int>(buttons.size());
    layout->addWidget(sample, 0, 0, 1, columns);
    for (int column = 0; column < columns; ++column)
        layout->addWidget(buttons[column], 1, column);
    return box;
}

}  // namespace

OptionsGeneralPage::OptionsGeneralPage(Dialogs& dialogs, Disk& disk, OptionsState& state,
                                       QWidget* parent)
    : QWidget(parent), dialogs_(dialogs), state_(state) {
    auto* layout = new QGridLayout(this);
    layout->addWidget(MakeCheckBoxes(), 0, 0);
    layout->addWidget(MakeFolderChooser(disk), 0, 1);
    layout->addWidget(MakeEditorSample(), 1, 0);
    layout->addWidget(MakeTerminalSample(), 1, 1);
    layout->setRowStretch(0, 1);
    layout->setColumnStretch(0, 1);
    layout->setColumnStretch(1, 1);
    ShowSamples();
}

QWidget* OptionsGeneralPage::MakeCheckBoxes() {
    auto* boxes = new QWidget;
    auto* layout = new QVBoxLayout(boxes);
    layout->setContentsMargins({});
    for (const Switch& row : kSwitches) {
        auto* box = new QCheckBox(row.text);
        box->setObjectName(row.name);
        box->setAccessibleName(row.text);
        box->setToolTip(row.hint);
        box->setAccessibleDescription(row.hint);
        box->setChecked(state_.*row.on);
        connect(box, &QCheckBox::toggled, this, [this, &row](bool on) { state_.*row.on = on; });
        if (row.on == &OptionsState::colourSource)
            connect(box, &QCheckBox::clicked, this, [this] {
                dialogs_.ShowMessage(
                    this,
                    "OK. You must close any open source files for the change to effect them.");
            });
        layout->addWidget(box);
    }
    layout->addStretch();
    return boxes;
}

QWidget* OptionsGeneralPage::MakeFolderChooser(Disk& disk) {
    auto* chooser = new FolderChooser(disk);
    chooser->SetFolder(state_.sourceFolder);
    connect(chooser, &FolderChooser::FolderChosen, this,
            [this](const QString& folder) { state_.sourceFolder = folder; });
    return chooser;
}

QWidget* OptionsGeneralPage::MakeEditorSample() {
    editSample_ = MakeSample("lblEditColours", "Sample of the editor's colours and font",
                             "; Both LEDs\nSET LEDS ON, ON\nWAIT 25");
    auto* font = MakeButton("btnFontToUse", "Font to use", "Font of the editor");
    auto* page = MakeButton("cmdChangeEditPage", "Page Colour", "Page colour of the editor");
    auto* text = MakeButton("cmdChangeEditText", "Text Colour", "Text colour of the editor");
    connect(font, &QPushButton::clicked, this, &OptionsGeneralPage::ChooseFont);
    connect(page, &QPushButton::clicked, this, [this] { ChooseColour(&OptionsState::editPage); });
    connect(text, &QPushButton::clicked, this, [this] { ChooseColour(&OptionsState::editText); });
    auto* usual =
        MakeButton("cmdDefaultEditColours", "Default Colours", "Default colours of the editor");
    usual->setToolTip("The colours of the desktop, also when it changes between light and dark.");
    connect(usual, &QPushButton::clicked, this, [this] {
        state_.editPage = DefaultColour(SettingNumber::EditorPageColour);
        state_.editText = DefaultColour(SettingNumber::EditorTextColour);
        ShowSamples();
    });
    return MakeSampleBox("Source Editor", editSample_, {font, page, text, usual});
}

QWidget* OptionsGeneralPage::MakeTerminalSample() {
    terminalSample_ = MakeSample("lblTerminalColours", "Sample of the terminal's colours",
                                 "Kinetron ready\n>RUN");
    auto* page = MakeButton("cmdChangeTerminalPage", "Page", "Background of the terminal");
    auto* text = MakeButton("cmdChangeTerminalText", "Text", "Text colour of the terminal");
    connect(page, &QPushButton::clicked, this,
            [this] { ChooseColour(&OptionsState::terminalBack); });
    connect(text, &QPushButton::clicked, this,
            [this] { ChooseColour(&OptionsState::terminalText); });
    auto* usual = MakeButton("cmdDefaultTerminalColours", "Default Colours",
                             "Default colours of the terminal");
    connect(usual, &QPushButton::clicked, this, [this] {
        state_.terminalBack = DefaultColour(SettingNumber::TerminalBackColour);
        state_.terminalText = DefaultColour(SettingNumber::TerminalTextColour);
        ShowSamples();
    });
    return MakeSampleBox("Terminal", terminalSample_, {page, text, usual});
}

void OptionsGeneralPage::ShowSamples() {
    SetColours(*editSample_, state_.editPage, state_.editText);
    SetColours(*terminalSample_, state_.terminalBack, state_.terminalText);
    QFont font(state_.fontName);
    font.setPointSizeF(state_.fontSize);
    editSample_->setFont(font);
}

void OptionsGeneralPage::ChooseColour(std::int32_t OptionsState::*colour) {
    const auto chosen = dialogs_.ChooseColour(this, ToColour(state_.*colour, palette()));
    if (!chosen) return;
    state_.*colour = FromColour(*chosen);
    ShowSamples();
}

void OptionsGeneralPage::ChooseFont() {
    const auto chosen = dialogs_.ChooseFont(this, editSample_->font());
    if (!chosen) return;
    state_.fontName = chosen->family();
    // A font chosen in pixels has no size in points of its own.
    state_.fontSize =
        chosen->pointSizeF() > 0 ? chosen->pointSizeF() : QFontInfo(*chosen).pointSizeF();
    ShowSamples();
}

}  // namespace zentro
