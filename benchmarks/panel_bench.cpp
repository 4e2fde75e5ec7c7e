// The cost of one keystroke and of one scroll step in the panel, at 10 and at 100,000 nodes: the
// event, what it changes, and the repaint.

#include "Median.h"
#include "SampleLibrary.h"
#include "app/AppDelegate.h"
#include "app/FloatingPanel.h"
#include "platform/Platform.h"
#include "support/WholeFile.h"
#include "views/NodeEditor.h"
#include "views/NodeList.h"
#include "views/OverlayScrollBar.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

namespace
{

constexpr int StepsInABlock = 48;
constexpr int Rounds = 15;

/// One program on a library of its own. Saves are due 0.25 seconds after the last change and so
/// fall outside what is measured.
struct Program {
    explicit Program(std::size_t nodes)
    {
        qputenv("XDG_DATA_HOME", folder.path().toLocal8Bit());
        QDir(folder.path()).mkdir(QStringLiteral("Quillsatchel"));
        WholeFile::replace(folder.filePath(QStringLiteral("Quillsatchel/prompts.json")),
                           [nodes](const ByteSink &sink) { sink(sampleLibrary(nodes).encode()); });
        delegate = std::make_unique<AppDelegate>(desktopPlatform());
        delegate->applicationDidFinishLaunching();
        QTest::qWait(500);
        list = delegate->panel().findChild<NodeList *>();
        editor = list->findChild<NodeEditor *>();
        scrollBar = list->findChild<OverlayScrollBar *>();
    }

    QTemporaryDir folder;
    std::unique_ptr<AppDelegate> delegate;
    NodeList *list = nullptr;
    NodeEditor *editor = nullptr;
    OverlayScrollBar *scrollBar = nullptr;
};

template <typename Step>
double microseconds(Step &&step)
{
    const auto start = std::chrono::steady_clock::now();
    std::forward<Step>(step)();
    QApplication::processEvents();
    return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start)
        .count();
}

void typeLetter(const Program &program)
{
    QTest::keyClick(program.editor, Qt::Key_A);
}

void scrollStep(const Program &program, int run)
{
    // To and fro over three cards, so that cards are handed new nodes on the way.
    constexpr int Step = 60;
    constexpr int StepsOneWay = 8;
    const bool isDown = run / StepsOneWay % 2 == 0;
    program.scrollBar->setValue(program.scrollBar->value() + (isDown ? Step : -Step));
}

/// Some steps in one program while it is the active one; the median.
template <typename Step>
double block(const Program &program, Step &&step)
{
    program.delegate->panel().activateWindow();
    program.editor->setFocus();
    QTest::qWait(50);
    std::vector<double> times;
    times.reserve(StepsInABlock);
    for (int run = 0; run < StepsInABlock; ++run)
        times.push_back(microseconds([&] { step(program, run); }));
    return median(times);
}

/// Both programs in turn, block by block; prints the medians and their ratio.
template <typename Step>
void compare(const char *what, const Program &small, const Program &large, Step &&step)
{
    std::vector<double> smalls;
    std::vector<double> larges;
    std::vector<double> ratios;
    for (int round = 0; round < Rounds; ++round) {
        smalls.push_back(block(small, step));
        larges.push_back(block(large, step));
        ratios.push_back(larges.back() / smalls.back());
    }
    std::printf("%-12s 10 nodes %8.0f us   100,000 nodes %8.0f us   ratio %.3f\n", what,
                median(smalls), median(larges), median(ratios));
}

} // namespace

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    const Program small(10);
    const Program large(100'000);
    compare("keystroke", small, large, [](const Program &program, int) { typeLetter(program); });
    compare("scroll step", small, large, scrollStep);
    return EXIT_SUCCESS;
}
