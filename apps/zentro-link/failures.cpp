#include "apps/zentro-link/failures.h"

#include "apps/zentro-link/console.h"

namespace zentro {

ExitStatus TellLost(const Options& options) {
    TellFailure("the connection to " + options.port + " was lost");
    return ExitStatus::NoConnection;
}

ExitStatus TellNoAnswer(const BoardLine& line, const Options& options) {
    if (line.IsLost()) return TellLost(options);
    const std::string what = line.Received().empty() ? "" : "; what it says is not understood";
    TellFailure("the board on " + options.port + " does not answer" + what);
    return ExitStatus::Refused;
}

ExitStatus TellRefusal(std::string_view words) {
    TellFailure("the board answers: " + std::string(words));
    return ExitStatus::Refused;
}

}  // namespace zentro
