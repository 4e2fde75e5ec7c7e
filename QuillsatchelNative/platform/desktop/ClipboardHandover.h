#pragma once

/// Saves the clipboard when the program ends.
namespace ClipboardHandover
{

/// Gives the text that this process put on an X11 clipboard to the desktop's clipboard manager, if
/// there is one. Gives up 0.3 seconds after the manager's last request, and after three seconds in
/// total. Qt does the same when the application is destroyed, but waits five seconds for a manager
/// that does not answer; the text is lost either way. Runs the event loop without user input. Needs
/// the QGuiApplication.
void finish();

} // namespace ClipboardHandover
