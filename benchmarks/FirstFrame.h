#pragma once

class QWindow;

/// Prints the monotonic clock's nanoseconds to the standard output once the window's first frame
/// is painted and handed to the screen.
void announceFirstFrame(QWindow &window);
