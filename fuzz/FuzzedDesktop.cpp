#include "FuzzedDesktop.h"

#include "fakes/TestFiles.h"

#include <QGuiApplication>
#include <QIcon>
#include <QPixmapCache>
#include <gio/gio.h>

#include <array>
#include <string>

namespace
{

void makeApplication()
{
    static std::string name = "fuzzer";
    static std::array<char *, 2> arguments { name.data(), nullptr };
    static int count = 1;
    static const QGuiApplication application(count, arguments.data());
}

void ignoreMessage(QtMsgType /*type*/, const QMessageLogContext & /*context*/,
                   const QString & /*text*/)
{
}

} // namespace

FuzzedDesktop::FuzzedDesktop()
{
    for (const auto *const name : { "HOME", "XDG_DATA_HOME", "XDG_DATA_DIRS", "XDG_CONFIG_HOME",
                                    "XDG_CONFIG_DIRS", "XDG_RUNTIME_DIR" })
        qputenv(name, m_folder.path().toUtf8());
    qputenv("XDG_CURRENT_DESKTOP", "Quill");
    qputenv("LANGUAGE", "de");
    qputenv("GIO_USE_VFS", "local");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Warnings are about the fuzzed file; critical messages are about wrong calls in our code.
    g_log_set_always_fatal(G_LOG_LEVEL_CRITICAL);
    qInstallMessageHandler(&ignoreMessage);
    makeApplication();
    QIcon::setThemeSearchPaths({ m_folder.path() });
    QPixmapCache::setCacheLimit(0); // its keys do not cover the contents of a file
}

std::string FuzzedDesktop::writeFile(std::string_view bytes) const
{
    TestFiles::write(m_file, bytes);
    return m_file;
}
