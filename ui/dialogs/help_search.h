#pragma once

#include <QWidget>
#include <vector>

class QLabel;
class QLineEdit;
class QTextBrowser;

namespace zentro {

/// Searches the page that a help window shows: a field, buttons for the previous and the next
/// place, and how many there are. Goes round at both ends of the page.
class HelpSearch : public QWidget {
    Q_OBJECT

  public:
    /// The page outlives the object.
    explicit HelpSearch(QTextBrowser& page, QWidget* parent = nullptr);

    /// Takes the text, or keeps its own when it is empty, and waits in the field for the user.
    void Open(const QString& text = {});
    /// Shows the next place with the text. A new text that names a place of the page is found there
    /// first.
    void FindNext();
    void FindPrevious();

  signals:
    /// The text names a place of the page: its name as the page has it. Whoever shows the page goes
    /// there.
    void PlaceNamed(const QString& name);
    /// The user looks for something else.
    void TextEdited();

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    struct Match {
        int begin = 0;
        int end = 0;
    };

    void AddButton(const char* name, const QString& text, void (HelpSearch::*pressed)());
    void FindMatches();
    bool GoToPlace();
    int FirstVisible() const;
    void Select(std::size_t match, const QString& text);
    void Highlight();
    void Tell(const QString& text);

    QTextBrowser& page_;
    QLineEdit* field_;
    QLabel* count_;
    std::vector<Match> matches_;  ///< in the order of the page
    bool isNew_ = true;           ///< the text was not gone to yet
};

}  // namespace zentro
