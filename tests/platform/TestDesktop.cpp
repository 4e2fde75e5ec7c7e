#include "platform/TestDesktop.h"

#include "fakes/TestFiles.h"

#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <memory>
#include <sstream>

namespace TestDesktop
{

namespace
{

std::unique_ptr<QTemporaryDir> &root()
{
    static std::unique_ptr<QTemporaryDir> folder;
    return folder;
}

void setVariable(const char *name, const std::string &value)
{
    qputenv(name, QByteArray::fromStdString(value));
}

std::vector<std::string> readList(const std::filesystem::path &file, char separator)
{
    std::vector<std::string> items;
    std::istringstream text(TestFiles::read(file));
    for (std::string item; std::getline(text, item, separator);)
        items.push_back(item);
    return items;
}

std::map<std::string, std::string> readEnvironment(const std::filesystem::path &file)
{
    std::map<std::string, std::string> environment;
    for (const auto &variable : readList(file, '\0')) {
        const auto equals = variable.find('=');
        environment[variable.substr(0, equals)] = variable.substr(equals + 1);
    }
    return environment;
}

Start readStart(const std::filesystem::path &record)
{
    Start start;
    start.arguments = readList(record / "arguments", '\0');
    start.environment = readEnvironment(record / "environment");
    start.folder = TestFiles::read(record / "folder");
    start.files = readList(record / "files", '\n');
    std::istringstream ids(TestFiles::read(record / "ids"));
    ids >> start.parent >> start.session;
    return start;
}

} // namespace

void begin()
{
    root() = std::make_unique<QTemporaryDir>();
    setVariable("HOME", path("home"));
    setVariable("XDG_DATA_HOME", path("data"));
    setVariable("XDG_DATA_DIRS", path("system"));
    setVariable("XDG_CONFIG_HOME", path("config"));
    setVariable("XDG_CONFIG_DIRS", path("system-config"));
    setVariable("XDG_RUNTIME_DIR", path("runtime"));
    setVariable("XDG_CURRENT_DESKTOP", "Quill");
    setVariable("PATH", path("bin").string() + ":/usr/bin:/bin");
    setVariable("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + path("no-bus").string());
    setVariable("LANGUAGE", "de");
    setVariable("LC_COLLATE", "de_DE.UTF-8");
    setVariable("LC_CTYPE", "C.UTF-8");
    for (const auto *const name : { "DISPLAY", "WAYLAND_DISPLAY", "LC_ALL", "GIO_LAUNCH_DESKTOP" })
        qunsetenv(name);
    for (const auto *const folder : { "home", "data", "system", "config", "runtime", "records" })
        std::filesystem::create_directories(path(folder));
    TestFiles::setMode(path("runtime"), 0700);
}

void end()
{
    root().reset();
}

std::filesystem::path path(const std::filesystem::path &relative)
{
    return std::filesystem::path(root()->path().toStdString()) / relative;
}

std::filesystem::path addProgram(const std::string &name)
{
    auto program = path("bin") / name;
    const std::string record = path("records") / name;
    TestFiles::write(program, "#!/bin/sh\n"
                              "new='" +
                                  record +
                                  ".new'\n"
                                  "mkdir \"$new\" || exit 1\n"
                                  "[ $# -eq 0 ] || printf '%s\\0' \"$@\" >\"$new/arguments\"\n"
                                  "cat /proc/$$/environ >\"$new/environment\"\n"
                                  "printf %s \"$(pwd -P)\" >\"$new/folder\"\n"
                                  "readlink /proc/$$/fd/* >\"$new/files\"\n"
                                  "cut -d ' ' -f 4,6 /proc/$$/stat >\"$new/ids\"\n"
                                  "mv \"$new\" '" +
                                  record + "'\n");
    TestFiles::setMode(program, 0755);
    return program;
}

std::string addEntry(const std::string &id, const std::string &text)
{
    auto entry = path("data/applications") / id;
    TestFiles::write(entry, text);
    return entry;
}

std::string entryText(const std::string &command, const std::string &more)
{
    return "[Desktop Entry]\nType=Application\nName=Name\nExec=" + command + "\n" + more;
}

std::optional<Start> waitForStart(const std::string &program)
{
    const auto record = path("records") / program;
    if (!waitUntil([&record] { return std::filesystem::exists(record); }))
        return std::nullopt;
    auto start = readStart(record);
    std::filesystem::remove_all(record);
    return start;
}

std::vector<std::string> startedPrograms()
{
    std::vector<std::string> programs;
    for (const auto &record : std::filesystem::directory_iterator(path("records")))
        programs.push_back(record.path().filename().string());
    std::sort(programs.begin(), programs.end());
    return programs;
}

bool waitUntil(const std::function<bool()> &isReached)
{
    constexpr int Timeout = 20'000; // milliseconds
    return QTest::qWaitFor(isReached, Timeout);
}

} // namespace TestDesktop
