#pragma once

#include <string>
#include <string_view>

namespace zentro {

/// Makes of what a board sends a text that any terminal may show: printable characters, tabs, line
/// ends and the board's four escape sequences. Every other control character and sequence could
/// make a terminal do something else than show text; its control characters are left out.
class BoardText {
  public:
    /// The text in UTF-8. A sequence that is not whole yet is held back until its rest comes.
    std::string Take(std::string_view bytes);

  private:
    std::string held_;
};

}  // namespace zentro
