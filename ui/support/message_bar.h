#pragma once

#include <QStatusBar>
#include <QString>
#include <QTimer>
#include <chrono>

namespace zentro {

/// A status bar that shortens a message that is too long for it, well before its panels begin. The
/// whole message is in its tool tip. What covers a message for a while gives it back afterwards.
class MessageBar : public QStatusBar {
    Q_OBJECT

  public:
    explicit MessageBar(QWidget* parent = nullptr,
                        std::chrono::milliseconds newsTime = std::chrono::seconds(10));

    /// What holds until it is said otherwise; empty: nothing. Anything but nothing ends the news.
    void ShowLasting(const QString& text);
    /// What has happened just now. It is seen for the time of news.
    void ShowNews(const QString& text);
    /// What the command under the mouse does; empty: there is none any more.
    void ShowHint(const QString& text);

    /// The message as far as there is room for it, on one line.
    QString ShownMessage() const;

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    QRect MessageRect() const;
    void ShowFirst();

    QString lasting_;
    QString news_;
    QString hint_;
    QTimer newsEnd_;
};

}  // namespace zentro
