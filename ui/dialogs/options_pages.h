#pragma once

#include <QWidget>

#include "ui/dialogs/options_state.h"
#include "ui/support/workbench.h"

class QLabel;
class QLineEdit;

namespace zentro {

/// The page of the check boxes, the source folder, the colours and the font. Each of these pages
/// shows the state that it is given and changes it at once; the state outlives the page.
class OptionsGeneralPage : public QWidget {
    Q_OBJECT

  public:
    OptionsGeneralPage(Dialogs& dialogs, Disk& disk, OptionsState& state,
                       QWidget* parent = nullptr);

  private:
    QWidget* MakeCheckBoxes();
    QWidget* MakeFolderChooser(Disk& disk);
    QWidget* MakeEditorSample();
    QWidget* MakeTerminalSample();
    void ShowSamples();
    void ChooseColour(std::int32_t OptionsState::*colour);
    void ChooseFont();

    Dialogs& dialogs_;
    OptionsState& state_;
    QLabel* editSample_ = nullptr;
    QLabel* terminalSample_ = nullptr;
};

/// The page of the files and the web addresses.
class OptionsAdvancedPage : public QWidget {
    Q_OBJECT

  public:
    OptionsAdvancedPage(Dialogs& dialogs, OptionsState& state, QWidget* parent = nullptr);

  private:
    void ChooseFile(QLineEdit& field, const QString& title, const QString& filter);
    void ChooseFolder(QLineEdit& field, const QString& title);

    Dialogs& dialogs_;
    OptionsState& state_;
};

}  // namespace zentro
