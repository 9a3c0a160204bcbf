#include "ui/terminal/screen_text.h"

#include <QKeyEvent>
#include <QStringView>
#include <algorithm>

#include "config/encoding.h"

namespace zentro {

namespace {

int CommonPrefix(QStringView one, QStringView other) {
    const auto [end, ignored] = std::ranges::mismatch(one, other);
    return static_cast<int>(end - one.begin());
}

bool IsHexadecimal(QChar c) {
    return (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'F') || (c >= u'a' && c <= u'f');
}

bool IsAddress(QStringView text) {
    return text.size() == kAddressLength && text.front() == u'[' && text.back() == u']' &&
           std::ranges::all_of(text.sliced(1, kAddressLength - 2), IsHexadecimal);
}

}  // namespace

ShownScreen ShowScreen(std::string_view screen) {
    ShownScreen shown;
    // Every character is one byte before and one QChar after: Windows-1252 lies in the basic plane.
    const QString characters = QString::fromStdString(ToUtf8(screen));
    for (std::size_t i = 0; i < screen.size(); ++i) {
        if (screen[i] == '\n') continue;  // shown with its CR
        shown.positions.push_back(i);
        if (screen[i] != '\r') {
            shown.text += characters[static_cast<qsizetype>(i)];
            continue;
        }
        shown.text += u'\n';
        while (i + 1 < screen.size() && screen[i + 1] == '\r')
            ++i;
    }
    shown.positions.push_back(screen.size());
    return shown;
}

int ShownPosition(const ShownScreen& shown, std::size_t screenPosition) {
    const auto found = std::ranges::lower_bound(shown.positions, screenPosition);
    return std::min(static_cast<int>(found - shown.positions.begin()),
                    static_cast<int>(shown.text.size()));
}

std::size_t ScreenPosition(const ShownScreen& shown, int shownPosition) {
    const int last = static_cast<int>(shown.text.size());
    return shown.positions[static_cast<std::size_t>(std::clamp(shownPosition, 0, last))];
}

ScreenEdit FindEdit(const QString& before, const QString& after) {
    ScreenEdit best;
    for (qsizetype start = 0; start <= before.size();) {
        const int keep = CommonPrefix(QStringView(before).sliced(start), after);
        if (start == 0 || keep > best.keep) best = {static_cast<int>(start), keep};
        if (best.keep == after.size()) break;
        const qsizetype lineEnd = before.indexOf(u'\n', start);
        if (lineEnd < 0) break;
        start = lineEnd + 1;
    }
    return best;
}

std::optional<int> FindAddress(const QString& text, int position) {
    for (int start = position; start >= 0 && start >= position - kAddressLength; --start) {
        if (IsAddress(QStringView(text).mid(start, kAddressLength))) return start;
    }
    return std::nullopt;
}

std::optional<char> KeyToSend(const QKeyEvent& event) {
    const bool isKept = event.matches(QKeySequence::Copy) || event.matches(QKeySequence::Paste) ||
                        event.matches(QKeySequence::SelectAll);
    const bool isMenuKey = event.modifiers().testFlag(Qt::AltModifier) &&
                           !event.modifiers().testFlag(Qt::ControlModifier);
    const QString text = event.text();
    if (isKept || isMenuKey || text.size() != 1 || text == QChar(u'\0')) return std::nullopt;
    const std::string character = DecodeText(text.toStdString());
    if (character.size() != 1 || (character == "?" && text != "?")) return std::nullopt;
    return character.front();
}

}  // namespace zentro
