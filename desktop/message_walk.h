#pragma once

#include <optional>
#include <vector>

#include "desktop/program_report.h"

namespace zentro {

/// A line that has messages.
struct MessageStop {
    QString file;  ///< its key
    int line = 0;  ///< from 1
    QString text;  ///< of its messages, a row each

    bool operator==(const MessageStop&) const = default;
};

enum class Direction : std::uint8_t { Forward, Backward };

/// The lines of a program that have messages, file by file in the order of reading. A line that
/// includes a file with mistakes is none: the mistakes themselves are.
std::vector<MessageStop> MessageStops(const ProgramReport& report);

/// The stop after or before a line of a file, round the program's end; nothing without stops. From
/// a file that has none, the first or the last one.
std::optional<MessageStop> NextStop(const ProgramReport& report, const QString& file, int line,
                                    Direction direction);

}  // namespace zentro
