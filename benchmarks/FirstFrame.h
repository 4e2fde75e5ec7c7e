#pragma once

class QWindow;

/// Prints the monotonic clock in nanoseconds when the window's first frame is painted and flushed.
void announceFirstFrame(QWindow &window);
