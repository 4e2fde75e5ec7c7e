#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

/// A private desktop in folders that hide the machine's from GIO and Qt: German, without display
/// and bus.
namespace TestDesktop
{

/// A recorded program start.
struct Start {
    std::vector<std::string> arguments;
    std::map<std::string, std::string> environment;
    std::string folder;
    std::vector<std::string> files; ///< open file descriptors
    long parent = 0;
    long session = 0;
};

/// Creates the desktop. Call it before using GIO or creating the application.
void begin();

/// Removes it.
void end();

/// An absolute path in the desktop's folder.
std::filesystem::path path(const std::filesystem::path &relative);

/// Installs a program that records its starts, first in PATH.
std::filesystem::path addProgram(const std::string &name);

/// Installs a desktop entry for the user and returns its path.
std::string addEntry(const std::string &id, const std::string &text);

/// The text of an application entry: a name and the command, then `more`.
std::string entryText(const std::string &command, const std::string &more = {});

/// The start of the program since the last call. Waits for it with a timeout.
std::optional<Start> waitForStart(const std::string &program);

/// The programs started and not yet returned by `waitForStart`.
std::vector<std::string> startedPrograms();

/// Runs the event loop until `isReached`; false on timeout.
bool waitUntil(const std::function<bool()> &isReached);

} // namespace TestDesktop
