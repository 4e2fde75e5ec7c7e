#include "platform/speech/ListenerProcess.h"

#include <QFile>

#include <climits>
#include <csignal>
#include <cstddef>
#include <unistd.h>

namespace
{

/// Runs between fork and exec, where only async-signal-safe functions may be called.
void prepareChild()
{
    // Closed by exec, not now: QProcess reports through one of them why exec failed.
    close_range(STDERR_FILENO + 1, UINT_MAX, CLOSE_RANGE_CLOEXEC);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    for (int number = 1; number < NSIG; ++number)
        std::signal(number, SIG_DFL);
}

/// Restores the handler of SIGPIPE. The first write of a QProcess replaces it by SIG_IGN, which
/// programs that are started later would inherit.
void keepSigpipeHandler(ListenerProcess *process)
{
    struct sigaction handler {
    };

    sigaction(SIGPIPE, nullptr, &handler);
    if (handler.sa_handler == SIG_DFL)
        return;
    const auto restore = [handler] { sigaction(SIGPIPE, &handler, nullptr); };
    QObject::connect(process, &QProcess::bytesWritten, process, restore);
    QObject::connect(process, &QProcess::errorOccurred, process, restore);
}

} // namespace

ListenerProcess::ListenerProcess(const std::vector<std::string> &command, QObject *parent)
    : QProcess(parent)
{
    setProgram(QFile::decodeName(command.front().c_str()));
    QStringList arguments;
    for (std::size_t index = 1; index < command.size(); ++index)
        arguments += QString::fromStdString(command[index]);
    setArguments(arguments);
    setStandardErrorFile(nullDevice());
    setChildProcessModifier(prepareChild);
    keepSigpipeHandler(this);
}

ListenerProcess::~ListenerProcess()
{
    blockSignals(true);
    kill();
    waitForFinished(-1);
}

void ListenerProcess::stop()
{
    disconnect();
    connect(this, &QProcess::finished, this, &QObject::deleteLater);
    kill();
    if (state() == NotRunning)
        deleteLater();
}
