#pragma once

#include <QStringList>
#include <QWidget>
#include <functional>
#include <vector>

class QBoxLayout;
class QGridLayout;
class QScrollArea;
class QToolButton;

namespace zentro {

/// What stands on the desk while no window is open: everything that one can begin with, each a
/// button.
class StartPage : public QWidget {
    Q_OBJECT

  public:
    /// What the buttons do.
    struct Actions {
        std::function<void()> newProgram;
        std::function<void()> open;
        std::function<void()> firstLesson;
        std::function<void()> openBoard;
        std::function<void(const QString& path)> openFile;
        std::function<void(const QStringList& paths)> openFiles;
    };

    /// The example programs are those of the folder. What was open or used before, and is still
    /// there, is asked for whenever the page is shown.
    StartPage(Actions actions, const QString& examplesFolder,
              std::function<QStringList()> recentFiles, std::function<QStringList()> sessionFiles);

  protected:
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QWidget* MakeBeginnings();
    QWidget* MakeExamples(const QString& folder);
    QWidget* MakeRecent();
    QToolButton* AddButton(QBoxLayout& layout, const QString& name, const QString& text,
                           const QString& icon, std::function<void()> action);
    void PlaceExamples();
    void ShowRecent();

    Actions actions_;
    std::function<QStringList()> recentFiles_;
    std::function<QStringList()> sessionFiles_;
    QScrollArea* area_ = nullptr;
    QWidget* left_ = nullptr;
    QGridLayout* exampleGrid_ = nullptr;
    std::vector<QToolButton*> examples_;
    int exampleColumns_ = 0;
    QWidget* recent_ = nullptr;
    QBoxLayout* recentRows_ = nullptr;
};

}  // namespace zentro
