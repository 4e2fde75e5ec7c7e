#pragma once

class QWindow;

/// Prints the monotonic clock and the CPU time of the process, both in nanoseconds, when the
/// window's first frame is painted and flushed.
void announceFirstFrame(QWindow &window);
