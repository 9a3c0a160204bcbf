#pragma once

#include <QTimer>
#include <QUrl>
#include <QWidget>
#include <functional>

#include "ui/dialogs/text_history.h"
#include "ui/support/dialogs.h"
#include "ui/support/help_topic.h"

class QBoxLayout;
class QComboBox;
class QLabel;
class QTextBrowser;
class QToolButton;

namespace zentro {

class HelpCase;
class HelpSearch;

/// Shows help pages, which are files of this computer. Web addresses are handed to the desktop.
class HelpBrowser : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString StartingAddress READ StartingAddress WRITE SetStartingAddress)

  public:
    /// Opens a web address outside this program; false when that was not possible.
    using OpenOutside = std::function<bool(const QUrl&)>;

    /// `dialogs` outlives the window. Without `openOutside` the desktop opens web addresses.
    HelpBrowser(Dialogs& dialogs, Disk& disk, OpenOutside openOutside = {},
                QWidget* parent = nullptr);

    /// The page that is shown first and by Home: a path or a web address.
    QString StartingAddress() const { return startingAddress_; }
    void SetStartingAddress(const QString& address);

    /// Shows the place of that name on the starting page.
    void SearchForHelp(const QString& topic);
    /// Makes the address the starting one and shows the first of the topic's places that its page
    /// has, its top for a topic without anything. Where it has none of them, that is said and the
    /// search is ready to look for the word. The user's own case stands above the page until
    /// another one is shown.
    void ShowTopic(const QString& address, const HelpTopic& topic);

    QSize sizeHint() const override { return {760, 560}; }

  protected:
    /// The frame has the search's keys for its own search.
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    QWidget* MakeToolBar();
    QToolButton* AddButton(const QString& name, std::function<void()> pressed);
    void Navigate(const QUrl& address);
    void FollowLink(const QUrl& address);
    bool OpenWebAddress(const QUrl& address);
    void Begin(std::function<void()> load);
    void Load();
    void Stop();
    void ShowLoaded();
    void FindTopic();
    void GoToPlace(const QString& name);

    Dialogs& dialogs_;
    OpenOutside openOutside_;
    QString startingAddress_;
    HelpTopic topic_;  ///< to be found on the page that is being loaded
    TextHistory visited_;
    std::function<void()> pending_;  ///< the loading that is to begin
    QTimer loading_;
    QTextBrowser* page_;
    HelpCase* case_;
    HelpSearch* search_;
    QComboBox* address_;
    QBoxLayout* toolBar_ = nullptr;
    QBoxLayout* buttons_ = nullptr;
    QLabel* searching_;
    QLabel* status_;
    QToolButton* back_ = nullptr;
    QToolButton* forward_ = nullptr;
    QToolButton* stop_ = nullptr;
};

}  // namespace zentro
