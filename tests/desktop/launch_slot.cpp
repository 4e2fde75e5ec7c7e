// Opens what a launcher slot holds, as choosing it in a menu does: launch_slot SLOT

#include "fakes/FakeApplicationChooser.h"
#include "launchers/LauncherStore.h"

#include <QGuiApplication>
#include <QTimer>

#include <chrono>
#include <cstdlib>

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    FakeApplicationChooser chooser;
    LauncherStore store(chooser);
    store.launch(argc > 1 ? std::atoi(argv[1]) : 0);
    // What is still under way when the call returns gets its turn, as in a program that goes on.
    QTimer::singleShot(std::chrono::seconds(2), &application, &QCoreApplication::quit);
    return QGuiApplication::exec();
}
