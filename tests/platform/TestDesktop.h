#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

/// A desktop of the test's own, in folders that hide the machine's from GIO and Qt: German, with no
/// display and no bus.
namespace TestDesktop
{

/// How a program was started.
struct Start {
    std::vector<std::string> arguments;
    std::map<std::string, std::string> environment;
    std::string folder;
    std::vector<std::string> files; ///< that it has open
    long parent = 0;
    long session = 0;
};

/// Makes the desktop. Before GIO, Qt's application or the test look for one.
void begin();

/// Removes it.
void end();

/// An absolute path in the desktop's own folder.
std::filesystem::path path(const std::filesystem::path &relative);

/// Installs a program that notes how it is started; found in PATH before others of its name.
std::filesystem::path addProgram(const std::string &name);

/// Installs an entry for the user, and says where it is.
std::string addEntry(const std::string &id, const std::string &text);

/// The lines of an entry that belong to an application: a name and the program, then `more`.
std::string entryText(const std::string &command, const std::string &more = {});

/// How the program was started since this was last asked; waits for it to be, for some seconds.
std::optional<Start> waitForStart(const std::string &program);

/// Of the programs that were started and not asked for yet.
std::vector<std::string> startedPrograms();

/// Turns the event loop until `isReached`; false if that takes too long.
bool waitUntil(const std::function<bool()> &isReached);

} // namespace TestDesktop
