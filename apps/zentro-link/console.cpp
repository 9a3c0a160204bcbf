#include "apps/zentro-link/console.h"

#include <cstdio>
#include <unistd.h>

namespace zentro {

void TellFailure(std::string_view text) {
    static_cast<void>(
        std::fprintf(stderr, "zentro-link: %.*s\n", static_cast<int>(text.size()), text.data()));
}

ProgressLine::ProgressLine(bool quiet) : active_(!quiet && isatty(STDERR_FILENO) != 0) {}

ProgressLine::~ProgressLine() {
    if (percent_ >= 0) static_cast<void>(std::fputs("\r\033[K", stderr));
}

void ProgressLine::Show(double fraction) {
    const int percent = static_cast<int>(fraction * 100);
    if (!active_ || percent == percent_) return;
    percent_ = percent;
    static_cast<void>(std::fprintf(stderr, "\rDownloading ... %d %%", percent));
}

}  // namespace zentro
