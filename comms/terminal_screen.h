#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace zentro {

/// The terminal keeps so many counted lines; earlier ones leave at the top.
inline constexpr std::int32_t kScreenLines = 25;

/// So many characters of an escape sequence are held back for its rest to arrive; more are shown
/// as text.
inline constexpr std::size_t kMaxHeldEscape = 16;

/// In bytes. Of a longer screen, which lines without an end make, the oldest text leaves too.
inline constexpr std::size_t kMaxScreenText = std::size_t{64} << 10;

/// The text screen of the terminal. Lines end in CR LF. It understands four escape sequences of the
/// board: ESC "c" clears, ESC "[D" takes a character back, ESC "[" digit "A" takes lines off the
/// end, ESC "[0J" cuts at the cursor. They may arrive in pieces.
class TerminalScreen {
  public:
    /// Receives what leaves the screen for good, in order: lines at the top and what a clear takes.
    using LeavingText = std::function<void(std::string_view text)>;

    explicit TerminalScreen(LeavingText leaving = {});

    /// Takes over what the board sent. NUL characters are left out.
    void ProcessScreenText(std::string_view text);

    /// Enter was typed: the last line goes, so that the board's answer takes its place.
    void TakePromptLineOff();

    const std::string& Text() const { return text_; }
    /// 0 to the length of the text; at its end after everything that arrived.
    std::size_t Cursor() const { return cursor_; }
    /// Where the user put the cursor; kept within the text.
    void SetCursor(std::size_t position);
    /// As the sequences count: lines taken off the end count one too many, so it may be below 0.
    std::int32_t ScreenLineCount() const { return screenLineCount_; }
    /// What is held back because it begins with an escape sequence that is unfinished or unknown.
    const std::string& PendingEscape() const { return pendingEscape_; }

  private:
    std::size_t CarryOutEscape(std::string_view text);
    void AddLineEnd();
    void Clear();
    void EmptyText();
    void TakeCharacterBack();
    void TakeLinesOffEnd(std::int32_t lines);
    void CutAt(std::size_t position);
    std::size_t LinesToTrim();
    void Trim();

    LeavingText leaving_;
    std::string text_;
    std::size_t cursor_ = 0;
    std::int32_t screenLineCount_ = 0;
    std::string pendingEscape_;
};

}  // namespace zentro
