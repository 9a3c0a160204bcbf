#pragma once

#include <string>
#include <string_view>

namespace zentro {

/// Tells a failure on standard error.
void TellFailure(std::string_view text);

/// Shows how far a download has come on standard error, on a terminal alone. The line is wiped
/// away at the end.
class ProgressLine {
  public:
    explicit ProgressLine(bool quiet);
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    /// The fraction is from 0 to 1.
    void Show(double fraction);

  private:
    bool active_;
    int percent_ = -1;
};

}  // namespace zentro
