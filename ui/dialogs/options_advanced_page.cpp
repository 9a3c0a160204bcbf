#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/dialogs/options_pages.h"
#include "ui/support/dialogs.h"

namespace zentro {

namespace {

struct Location {
    const char* name;
    const char* label;
    QString OptionsState::*text;
    const char* button;  ///< empty: there is no file to choose
    const char* filter;  ///< empty: a folder is chosen
    const char* whenEmpty = "";
};

constexpr Location kLocations[] = {
    {"txtInstructionFile", "&Instructions Filename (ZentroCompiler.cfg)",
     &OptionsState::instructionFile, "cmdInstructionsConfig",
     "Instruction Configuration Files|*.cfg"},
    {"txtHelpFile", "&Help File Name", &OptionsState::helpFile, "cmdHelpfileName",
     "ZentroCompiler Help Files|*.htm"},
    {"txtObjectFolder", "&Object Code Folder", &OptionsState::objectFolder, "cmdObjectFolder", "",
     "Beside each source file"},
    {"txtCogwrightSite", "Cogwright &Website Name", &OptionsState::makerSite, "", ""},
    {"txtSourceSite", "&Source Website Name", &OptionsState::sourceSite, "", ""},
};

}  // namespace

OptionsAdvancedPage::OptionsAdvancedPage(Dialogs& dialogs, OptionsState& state, QWidget* parent)
    : QWidget(parent), dialogs_(dialogs), state_(state) {
    auto* box = new QGroupBox("File Locations");
    auto* grid = new QGridLayout(box);
    int row = 0;
    for (const Location& location : kLocations) {
        auto* label = new QLabel(location.label);
        auto* field = new QLineEdit(state_.*location.text);
        field->setObjectName(location.name);
        field->setAccessibleName(QString(location.label).remove('&'));
        field->setPlaceholderText(location.whenEmpty);
        label->setBuddy(field);
        connect(field, &QLineEdit::textChanged, this,
                [this, &location](const QString& text) { state_.*location.text = text; });
        grid->addWidget(label, row, 0);
        grid->addWidget(field, row, 1);
        if (*location.button != '\0') {
            auto* button = new QPushButton("Choose...");
            button->setObjectName(location.button);
            button->setAccessibleName("Choose " + field->accessibleName());
            button->setAutoDefault(false);
            connect(button, &QPushButton::clicked, this, [this, field, &location] {
                if (*location.filter == '\0')
                    ChooseFolder(*field, field->accessibleName());
                else
                    ChooseFile(*field, field->accessibleName(), location.filter);
            });
            grid->addWidget(button, row, 2);
        }
        ++row;
    }
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(box);
    layout->addStretch();
}

void OptionsAdvancedPage::ChooseFile(QLineEdit& field, const QString& title,
                                     const QString& filter) {
    const QFileInfo present(field.text());
    FileChoice choice;
    choice.title = title;
    choice.folder = present.path();
    choice.suggestedName = present.fileName();
    choice.filters = filter;
    if (const auto file = dialogs_.ChooseFileToOpen(this, choice)) field.setText(*file);
}

void OptionsAdvancedPage::ChooseFolder(QLineEdit& field, const QString& title) {
    if (const auto folder = dialogs_.ChooseFolder(this, title, field.text())) {
        field.setText(FolderPath(*folder));
    }
}

}  // namespace zentro
