#pragma once

#include <QByteArray>
#include <QObject>

#include <functional>

class QNetworkReply;

/// What has arrived of one reply. Belongs to the reply, and has it deleted when it is finished.
class Download final : public QObject
{
public:
    /// `receive` gets the body of a reply that arrived whole, has one, and has not more than 8 MiB.
    /// After that, or where there is none to receive, `onEnd` is called.
    Download(QNetworkReply &reply, std::function<void(const QByteArray &body)> receive,
             std::function<void()> onEnd);

private:
    void refuseWhatIsTooLong();
    void readOn();
    void finish();
    bool isWhole() const;

    QNetworkReply &m_reply;
    QByteArray m_body;
    std::function<void(const QByteArray &body)> m_receive;
    std::function<void()> m_onEnd;
};
