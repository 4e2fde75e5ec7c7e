// The cost of a keystroke and of a scroll step in the panel with 10 to 100,000 nodes: the event,
// the resulting changes, and the repaint.

#include "Figure.h"
#include "Median.h"
#include "Panels.h"
#include "SampleLibrary.h"
#include "app/AppDelegate.h"
#include "platform/desktop/DesktopPlatform.h"
#include "support/ReplaceFile.h"
#include "views/NodeEditor.h"
#include "views/NodeList.h"
#include "views/OverlayScrollBar.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace
{

constexpr int StepsInABlock = 48;
constexpr int Rounds = 15;

/// A program with its own library. Saves are not measured, because they start 0.25 seconds after
/// the last change.
struct Program {
    explicit Program(std::size_t nodes)
        : size(nodesText(nodes))
    {
        for (const auto *const name : { "XDG_DATA_HOME", "XDG_STATE_HOME" })
            qputenv(name, folder.path().toLocal8Bit());
        QDir(folder.path()).mkdir(QStringLiteral("Quillsatchel"));
        replaceFile(folder.filePath(QStringLiteral("Quillsatchel/prompts.json")),
                    [nodes](const ByteSink &sink) { sink(sampleLibrary(nodes).encode()); });
        const auto earlier = panels();
        delegate = std::make_unique<AppDelegate>(desktopPlatform());
        delegate->applicationDidFinishLaunching();
        QTest::qWait(500);
        auto opened = panels();
        opened.removeIf([&earlier](FloatingPanel *each) { return earlier.contains(each); });
        panel = opened.constFirst();
        list = panel->findChild<NodeList *>();
        editor = list->findChild<NodeEditor *>();
        scrollBar = list->findChild<OverlayScrollBar *>();
    }

    std::string size;
    QTemporaryDir folder;
    std::unique_ptr<AppDelegate> delegate;
    FloatingPanel *panel = nullptr;
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
    // Back and forth over three cards, so that cards are reused for other nodes.
    constexpr int Step = 60;
    constexpr int StepsOneWay = 8;
    const bool isDown = run / StepsOneWay % 2 == 0;
    program.scrollBar->setValue(program.scrollBar->value() + (isDown ? Step : -Step));
}

/// The median of several steps in one program, while its window is active.
template <typename Step>
double block(const Program &program, Step &&step)
{
    program.panel->activateWindow();
    program.editor->setFocus();
    QTest::qWait(50);
    std::vector<double> times;
    times.reserve(StepsInABlock);
    for (int run = 0; run < StepsInABlock; ++run)
        times.push_back(microseconds([&] { step(program, run); }));
    return median(times);
}

/// Measures all programs alternately, and prints the medians and their ratios to the first.
template <typename Step>
void compare(const char *what, const std::list<Program> &programs, Step &&step)
{
    std::vector<std::vector<double>> times(programs.size());
    std::vector<std::vector<double>> ratios(programs.size());
    for (int round = 0; round < Rounds; ++round) {
        std::size_t index = 0;
        for (const Program &program : programs) {
            times[index].push_back(block(program, step));
            ratios[index].push_back(times[index].back() / times.front().back());
            ++index;
        }
    }
    std::size_t index = 0;
    for (const Program &program : programs) {
        Figure { what, program.size,          median(times[index]),
                 "us", programs.front().size, median(ratios[index]) }
            .print();
        ++index;
    }
}

} // namespace

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    std::list<Program> programs;
    for (const std::size_t nodes : { 10, 100, 1'000, 10'000, 100'000 })
        programs.emplace_back(nodes);
    compare("keystroke", programs, [](const Program &program, int) { typeLetter(program); });
    compare("scroll step", programs, scrollStep);
    return EXIT_SUCCESS;
}
