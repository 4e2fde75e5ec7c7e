#include "TestSelection.h"
#include "platform/TestDesktop.h"

#include <QGuiApplication>
#include <gio/gio.h>
#include <gtest/gtest.h>

int main(int argc, char *argv[])
{
    TestDesktop::begin();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // The program must cause no GLib warnings.
    g_log_set_always_fatal(GLogLevelFlags(G_LOG_LEVEL_CRITICAL | G_LOG_LEVEL_WARNING));
    testing::InitGoogleTest(&argc, argv);
    selectTests(argc, argv);
    const QGuiApplication application(argc, argv);
    const int result = RUN_ALL_TESTS();
    TestDesktop::end();
    return result;
}
