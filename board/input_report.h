#pragma once

namespace zentro {

struct Board;

/// "R": reports the inputs now and then ten times a second, each report over the last one.
void StartReport(Board& board);

/// A tick has passed: makes the next report if it is due and the last one was taken by the host.
void AdvanceReport(Board& board);

}  // namespace zentro
