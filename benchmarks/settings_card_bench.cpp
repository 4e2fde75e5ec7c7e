// The time that the launcher settings add to the frame in which they appear: five slots with icons
// (three applications and two websites), compared with a repaint of the same panel. Needs a desktop
// with a tray, whose menu has already loaded the icons.

#include "Figure.h"
#include "Median.h"
#include "app/DarkAppearance.h"
#include "app/FloatingPanel.h"
#include "app/StatusItem.h"
#include "app/TitleBar.h"
#include "launchers/LauncherDocument.h"
#include "launchers/LauncherStore.h"
#include "library/SatchelStore.h"
#include "platform/desktop/DesktopPlatform.h"
#include "preferences/WindowPreferences.h"
#include "support/ReplaceFile.h"
#include "support/Uuid.h"
#include "views/PanelApplicationChooser.h"
#include "views/QuillsatchelView.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>

#include <chrono>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

namespace
{

constexpr int Rounds = 31;
constexpr int IconSide = 64;
constexpr int LongerThanAnAnimation = 250; // milliseconds

void write(const QString &path, const std::string &text)
{
    replaceFile(path, [&text](const ByteSink &sink) { sink(text); });
}

void writeIcon(const QString &path)
{
    QImage icon(IconSide, IconSide, QImage::Format_ARGB32);
    icon.fill(Qt::darkCyan);
    icon.save(path, "PNG");
}

LauncherItem makeApplication(const QDir &folder, int number)
{
    const QString name = QStringLiteral("application-%1").arg(number);
    const QString icon = folder.filePath(name + QStringLiteral(".png"));
    const QString entry = folder.filePath(name + QStringLiteral(".desktop"));
    writeIcon(icon);
    write(entry, "[Desktop Entry]\nType=Application\nName=" + name.toStdString() +
                     "\nExec=true\nIcon=" + icon.toStdString() + "\n");
    return { .kind = LauncherKind::application,
             .name = name.toStdString(),
             .target = entry.toStdString() };
}

LauncherItem makeWebsite(const QDir &favicons, int number)
{
    const std::string host = "website-" + std::to_string(number) + ".example.com";
    LauncherItem item { .kind = LauncherKind::website, .name = host, .target = "https://" + host };
    const auto id = uuidText(item.id);
    writeIcon(favicons.filePath(QString::fromLatin1(id.data(), qsizetype(id.size())) +
                                QStringLiteral(".png")));
    return item;
}

void fillSlots(const QTemporaryDir &home)
{
    const QDir folder(home.filePath(QStringLiteral("Quillsatchel")));
    folder.mkpath(QStringLiteral("Favicons"));
    const QDir favicons(folder.filePath(QStringLiteral("Favicons")));
    const QDir entries(home.path());
    const LauncherSlots slots { makeApplication(entries, 1), makeWebsite(favicons, 1),
                                makeApplication(entries, 2), makeWebsite(favicons, 2),
                                makeApplication(entries, 3) };
    replaceFile(folder.filePath(QStringLiteral("launchers.json")),
                [&slots](const ByteSink &sink) { LauncherDocument::encode(slots, sink); });
}

/// The parts of the program that show the launchers, set up as in the program.
struct Program {
    explicit Program(Platform &platform)
        : chooser(platform.workspace, platform.mainQueue, [](QDialog &) {})
        , store(platform)
        , launchers(chooser, platform)
        , panel(platform.windowSystem, preferences)
        , statusItem(platform.statusBar, preferences, launchers, [](const MenuItem &) {})
    {
        auto *const view =
            new QuillsatchelView(store, launchers, preferences, platform, TitleBar::Height, &panel);
        panel.setContent(view, new TitleBar(preferences, &panel));
        panel.center();
        panel.setFocus();
        panel.makeKeyAndOrderFront();
        statusItem.begin();
    }

    PanelApplicationChooser chooser;
    SatchelStore store;
    LauncherStore launchers;
    WindowPreferences preferences;
    FloatingPanel panel;
    StatusItem statusItem;
};

/// The time from `change` to the end of the turn that paints it.
template <typename Change>
double milliseconds(Change &&change)
{
    const auto start = std::chrono::steady_clock::now();
    std::forward<Change>(change)();
    QApplication::processEvents();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

} // namespace

int main(int argc, char *argv[])
{
    const QTemporaryDir home;
    for (const auto *const name : { "XDG_DATA_HOME", "XDG_STATE_HOME" })
        qputenv(name, home.path().toLocal8Bit());
    fillSlots(home);
    const QApplication application(argc, argv);
    DarkAppearance::apply();
    Program program(desktopPlatform());
    QTest::qWait(2 * LongerThanAnAnimation);

    auto &isWanted = program.preferences.showsSettingsCard;
    std::vector<double> openings;
    std::vector<double> repaints;
    for (int round = 0; round < Rounds; ++round) {
        repaints.push_back(milliseconds([&program] { program.panel.update(); }));
        openings.push_back(milliseconds([&isWanted] { isWanted.set(true); }));
        QTest::qWait(LongerThanAnAnimation);
        isWanted.set(false);
        QTest::qWait(LongerThanAnAnimation);
    }
    const double repaint = median(repaints);
    const auto report = [repaint](const char *size, double opening) {
        Figure { "settings card: added to its first frame",
                 size,
                 opening - repaint,
                 "ms",
                 "a repaint of the panel",
                 opening / repaint }
            .print();
    };
    report("five slots", median(openings));
    report("five slots, the first time", openings.front());
    return EXIT_SUCCESS;
}
