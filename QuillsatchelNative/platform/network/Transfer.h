#pragma once

#include <QThread>
#include <QUrl>

#include <chrono>
#include <functional>

class QNetworkAccessManager;

/// The thread on which everything happens that has to do with the network, also looking for
/// proxies and loading certificates. Used and destroyed on the thread that made it.
class NetworkThread final : public QThread
{
public:
    /// Starts at once. A request ends after `silence`.
    explicit NetworkThread(std::chrono::milliseconds silence);

    NetworkThread(const NetworkThread &) = delete;
    NetworkThread &operator=(const NetworkThread &) = delete;

    /// Drops the requests under way, whose functions are not called any more, and ends the thread.
    ~NetworkThread() override;

    /// Fetches what `url` names. On this thread, `receive` gets the whole body if there is one, and
    /// then `onEnd` is called in any case.
    void get(const QUrl &url, std::function<void(const QByteArray &body)> receive,
             std::function<void()> onEnd);

protected:
    void run() override;

private:
    int m_silence;                              // milliseconds
    QObject m_here;                             // on this thread
    QNetworkAccessManager *m_manager = nullptr; // lives while the thread runs
};
