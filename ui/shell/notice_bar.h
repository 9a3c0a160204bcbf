#pragma once

#include <QWidget>
#include <functional>

class QLabel;
class QPushButton;

namespace zentro {

/// A line above the windows that tells something and offers one thing to do about it. It blocks
/// nothing and can be put away.
class NoticeBar : public QWidget {
    Q_OBJECT

  public:
    explicit NoticeBar(QWidget* parent = nullptr);

    void Offer(const QString& text, const QString& button, std::function<void()> accepted);

  private:
    QLabel* text_;
    QPushButton* accept_;
    std::function<void()> accepted_;
};

}  // namespace zentro
