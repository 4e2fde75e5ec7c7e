#include "platform/speech/ListenerInquiry.h"

#include <utility>

ListenerInquiry::ListenerInquiry(const std::string &program,
                                 std::function<void(bool hasModel)> receive, QObject *parent,
                                 std::chrono::milliseconds limit)
    : QObject(parent)
    , m_receive(std::move(receive))
    , m_listener({ program, "--has-model" }, nullptr)
{
    connect(&m_listener, &QProcess::readyReadStandardOutput, this,
            [this] { answer(m_listener.readAllStandardOutput().startsWith('y')); });
    connect(&m_listener, &QProcess::finished, this, [this] { answer(false); });
    connect(
        &m_listener, &QProcess::errorOccurred, this, [this] { answer(false); },
        Qt::QueuedConnection);
    connect(&m_timer, &QTimer::timeout, this, [this] { answer(false); });
    m_timer.setSingleShot(true);
    m_timer.start(limit);
    m_listener.start();
}

void ListenerInquiry::answer(bool hasModel)
{
    deleteLater();
    if (const auto receive = std::exchange(m_receive, nullptr))
        receive(hasModel);
}
