#include "desktop/source_search.h"

namespace zentro {

QString SearchResultText(SearchResult result) {
    switch (result) {
        case SearchResult::Found: return {};
        case SearchResult::EndOfFile: return "End of File. Search again to restart";
        case SearchResult::EndOfAllFiles: return "Searched all open files. Search again to restart";
        case SearchResult::NothingOpen: return "There is no open source file to search.";
        case SearchResult::NothingToFind: return "Enter the text to find first (Edit, Find).";
    }
    return {};
}

QString ReplacedText(const QString& text, int count) {
    if (count == 0) return QString("\"%1\" was not found.").arg(text);
    if (count == 1) return QString("1 occurrence of \"%1\" was replaced.").arg(text);
    return QString("%1 occurrences of \"%2\" were replaced.").arg(QString::number(count), text);
}

SearchResult SourceSearch::FindText(const QString& text, FindOptions options, bool allFiles,
                                    bool newSearch) {
    if (newSearch || allFiles != allFiles_) Restart();
    text_ = text;
    options_ = options;
    allFiles_ = allFiles;
    return Search();
}

void SourceSearch::Remember(const QString& text, FindOptions options) {
    text_ = text;
    options_ = options;
    allFiles_ = false;
    lastMatch_ = 0;
}

SearchResult SourceSearch::FindNext() {
    return Search();
}

SearchResult SourceSearch::ReplaceText(const QString& text, const QString& replacement,
                                       FindOptions options, bool allFiles) {
    const bool newSearch = text != text_ || allFiles != allFiles_;
    const bool replaced = targets_.FrontTab() > 0 && targets_.ReplaceIfSelected(text, replacement);
    if (newSearch) Restart();
    allFiles_ = allFiles;
    if (replaced) {
        // Go on behind the replacement, which may hold the text itself.
        tab_ = targets_.FrontTab();
        lastMatch_ = 0;
    }
    return FindText(text, options, allFiles, false);
}

int SourceSearch::ReplaceAll(const QString& text, const QString& replacement, FindOptions options,
                             bool allFiles) {
    const int front = targets_.FrontTab();
    if (text.isEmpty() || front == 0) return 0;
    text_ = text;
    options_ = options;
    allFiles_ = allFiles;
    Restart();
    if (!allFiles) return ReplaceAllInFront(replacement);
    int count = 0;
    for (int tab = 1; tab <= targets_.TabCount(); ++tab) {
        targets_.BringToFront(tab);
        count += ReplaceAllInFront(replacement);
    }
    targets_.BringToFront(front);
    return count;
}

int SourceSearch::ReplaceAllInFront(const QString& replacement) {
    int count = 0;
    targets_.BeginUndoGroup();
    for (int match = targets_.Find(text_, false, options_); match != kNoMatch;
         match = targets_.Find(text_, true, options_)) {
        if (!targets_.ReplaceIfSelected(text_, replacement)) break;
        ++count;
    }
    targets_.EndUndoGroup();
    return count;
}

SearchResult SourceSearch::Search() {
    if (text_.isEmpty()) return SearchResult::NothingToFind;
    if (allFiles_) return SearchAllFiles();
    const int front = targets_.FrontTab();
    if (front == 0) return SearchResult::NothingOpen;
    targets_.BringToFront(front);
    lastMatch_ = targets_.Find(text_, lastMatch_ != kNoMatch, options_);
    return lastMatch_ == kNoMatch ? SearchResult::EndOfFile : SearchResult::Found;
}

SearchResult SourceSearch::SearchAllFiles() {
    if (targets_.TabCount() == 0) return SearchResult::NothingOpen;
    if (tab_ == kNotStarted) tab_ = 1;
    for (; tab_ <= targets_.TabCount(); ++tab_) {
        targets_.BringToFront(tab_);
        lastMatch_ = targets_.Find(text_, lastMatch_ != kNoMatch, options_);
        if (lastMatch_ != kNoMatch) return SearchResult::Found;
    }
    Restart();
    return SearchResult::EndOfAllFiles;
}

void SourceSearch::Restart() {
    tab_ = kNotStarted;
    lastMatch_ = kNoMatch;
}

}  // namespace zentro
