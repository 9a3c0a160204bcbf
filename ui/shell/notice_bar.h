#pragma once

#include <QString>
#include <QWidget>
#include <functional>
#include <vector>

class QLabel;
class QPushButton;

namespace zentro {

/// Something that the user should know, and one thing to do about it.
struct Notice {
    QString subject;  ///< a notice about the same takes its place
    QString text;
    QString button;
    std::function<void()> accepted;
    /// While it is true the notice stays; empty: until it is put away.
    std::function<bool()> holds = {};
};

/// A line above the windows for notices. It blocks nothing, and each notice can be put away.
class NoticeBar : public QWidget {
    Q_OBJECT

  public:
    explicit NoticeBar(QWidget* parent = nullptr);

    /// Shows the notice; one that was shown before comes back after it.
    void Offer(Notice notice);
    void Withdraw(const QString& subject);
    /// Takes away what does not hold any more.
    void Refresh();

  signals:
    /// A notice was answered that had the focus, which has to go somewhere.
    void FocusLeft();

  private:
    void TakeOff();
    void ShowLast();

    std::vector<Notice> notices_;
    QLabel* text_;
    QPushButton* accept_;
};

}  // namespace zentro
