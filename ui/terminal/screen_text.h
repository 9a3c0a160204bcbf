#pragma once

#include <QString>
#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

class QKeyEvent;

namespace zentro {

/// The terminal's screen as a text widget shows it. A line end is one character there: "\n". CRs
/// before a line end belong to it, so that a board's answer stands right below the line that Enter
/// left.
struct ShownScreen {
    QString text;
    std::vector<std::size_t> positions;  ///< of each character on the screen, and of the end
};

ShownScreen ShowScreen(std::string_view screen);

/// Where a character of the screen is shown.
int ShownPosition(const ShownScreen& shown, std::size_t screenPosition);
/// Which character of the screen is shown there.
std::size_t ScreenPosition(const ShownScreen& shown, int shownPosition);

/// How one shown text becomes another: so many characters go at the front, the next ones stay, and
/// what follows them is replaced by the rest of the new text.
struct ScreenEdit {
    int cutFront = 0;
    int keep = 0;

    bool operator==(const ScreenEdit&) const = default;
};

/// The edit that keeps the most.
ScreenEdit FindEdit(const QString& before, const QString& after);

/// Characters of an address as the board shows it: "[00A0]".
inline constexpr int kAddressLength = 6;

/// Where an address begins that stands at this place of the text or ends there.
std::optional<int> FindAddress(const QString& text, int position);

/// The character that a key sends to the board; nothing for keys that the program keeps for itself.
std::optional<char> KeyToSend(const QKeyEvent& event);

}  // namespace zentro
