#pragma once

#include <QTimer>
#include <QUrl>
#include <QWidget>
#include <functional>

#include "ui/dialogs/text_history.h"
#include "ui/support/dialogs.h"

class QComboBox;
class QLabel;
class QTextBrowser;
class QToolButton;

namespace zentro {

/// Shows help pages, which are files of this computer. Web addresses are handed to the desktop.
class HelpBrowser : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString StartingAddress READ StartingAddress WRITE SetStartingAddress)

  public:
    /// Opens a web address outside this program; false when that was not possible.
    using OpenOutside = std::function<bool(const QUrl&)>;

    /// `dialogs` outlives the window. Without `openOutside` the desktop opens web addresses.
    explicit HelpBrowser(Dialogs& dialogs, OpenOutside openOutside = {}, QWidget* parent = nullptr);

    /// The page that is shown first and by Home: a path or a web address.
    QString StartingAddress() const { return startingAddress_; }
    void SetStartingAddress(const QString& address);

    /// Shows the place of that name on the starting page; where it has none, the topic's first
    /// mention.
    void SearchForHelp(const QString& topic);

    QSize sizeHint() const override { return {760, 560}; }

  private:
    QWidget* MakeToolBar();
    QToolButton* AddButton(QWidget& bar, const QString& name, std::function<void()> pressed);
    void Navigate(const QUrl& address);
    void FollowLink(const QUrl& address);
    bool OpenWebAddress(const QUrl& address);
    void Begin(std::function<void()> load);
    void Load();
    void Stop();
    void ShowLoaded();
    void FindTopic();
    void AskForTopic();

    Dialogs& dialogs_;
    OpenOutside openOutside_;
    QString startingAddress_;
    QString topic_;  ///< to be found on the page that is being loaded
    TextHistory visited_;
    std::function<void()> pending_;  ///< the loading that is to begin
    QTimer loading_;
    QTextBrowser* page_;
    QComboBox* address_;
    QLabel* searching_;
    QLabel* status_;
    QToolButton* back_ = nullptr;
    QToolButton* forward_ = nullptr;
    QToolButton* stop_ = nullptr;
};

}  // namespace zentro
