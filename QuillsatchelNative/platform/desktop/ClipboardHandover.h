#pragma once

/// What becomes of the clipboard when the program ends.
namespace ClipboardHandover
{

/// Gives the text that this process put on an X11 clipboard to the desktop's clipboard manager, if
/// there is one. Returns 0.3 seconds after the manager's last sign of life. Qt would do the same
/// when the application is destroyed, but waits five seconds for a manager that does not answer;
/// the text is lost then either way. Runs the event loop, without the user's input. Needs the
/// QGuiApplication.
void finish();

} // namespace ClipboardHandover
