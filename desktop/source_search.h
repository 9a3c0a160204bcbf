#pragma once

#include <QString>

#include "desktop/find_options.h"

namespace zentro {

/// The open source windows as a search sees them. Tabs count from 1.
class SearchTargets {
  public:
    virtual ~SearchTargets() = default;

    virtual int TabCount() const = 0;
    /// The tab of the source window in front; 0 when there is none.
    virtual int FrontTab() const = 0;
    virtual void BringToFront(int tab) = 0;
    /// Selects the next match in the window in front: behind the match that is selected, or else
    /// from the caret, when `continueSearch` is set, otherwise from the start of the text.
    /// Returns its position from 0, or -1.
    virtual int Find(const QString& text, bool continueSearch, FindOptions options) = 0;
    /// Replaces the selection of the window in front when it is the text in any letter case, and
    /// puts the caret behind what was inserted. False when the selection is another.
    virtual bool ReplaceIfSelected(const QString& text, const QString& replacement) = 0;
    /// What is replaced between the two is undone in one step, where a window can do that.
    virtual void BeginUndoGroup() {}
    virtual void EndUndoGroup() {}
};

enum class SearchResult { Found, EndOfFile, EndOfAllFiles, NothingOpen, NothingToFind };

/// What the user is told of a result; empty for a match.
QString SearchResultText(SearchResult result);

/// "3 occurrences of "x" were replaced."
QString ReplacedText(const QString& text, int count);

/// The search for a text in the window in front or in all open source files, which Find Next goes
/// on with.
class SourceSearch {
  public:
    /// The targets outlive the search.
    explicit SourceSearch(SearchTargets& targets) : targets_(targets) {}

    /// A new search begins at the start of the text, or of the first file.
    SearchResult FindText(const QString& text, FindOptions options, bool allFiles, bool newSearch);
    /// The text was looked for in the window in front by other means: FindNext goes on with it.
    void Remember(const QString& text, FindOptions options);
    /// Goes on with the last search; NothingToFind when there was none.
    SearchResult FindNext();
    /// Replaces the selection of the window in front when it is the text, and goes to the next
    /// match.
    SearchResult ReplaceText(const QString& text, const QString& replacement, FindOptions options,
                             bool allFiles);
    /// Replaces every match and returns how many there were. The window in front stays in front.
    int ReplaceAll(const QString& text, const QString& replacement, FindOptions options,
                   bool allFiles);

  private:
    static constexpr int kNotStarted = 0;
    static constexpr int kNoMatch = -1;

    SearchResult Search();
    SearchResult SearchAllFiles();
    int ReplaceAllInFront(const QString& replacement);
    void Restart();

    SearchTargets& targets_;
    QString text_;
    FindOptions options_;
    bool allFiles_ = false;
    int tab_ = kNotStarted;     ///< the tab being searched when all files are
    int lastMatch_ = kNoMatch;  ///< its position in the file being searched
};

}  // namespace zentro
