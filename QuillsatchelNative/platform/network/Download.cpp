#include "platform/network/Download.h"

#include <QNetworkReply>

#include <utility>

namespace
{

constexpr qint64 LargestBody = qint64(8) * 1024 * 1024;
constexpr qint64 ReadBuffer = qint64(64) * 1024;

} // namespace

Download::Download(QNetworkReply &reply, std::function<void(const QByteArray &body)> receive,
                   std::function<void()> onEnd)
    : QObject(&reply)
    , m_reply(reply)
    , m_receive(std::move(receive))
    , m_onEnd(std::move(onEnd))
{
    // Qt reads ahead on another thread, faster than we take it, unless it is held back.
    reply.setReadBufferSize(ReadBuffer);
    connect(&reply, &QNetworkReply::metaDataChanged, this, &Download::refuseWhatIsTooLong);
    connect(&reply, &QNetworkReply::readyRead, this, &Download::readOn);
    connect(&reply, &QNetworkReply::finished, this, &Download::finish);
}

void Download::refuseWhatIsTooLong()
{
    if (m_reply.header(QNetworkRequest::ContentLengthHeader).toLongLong() > LargestBody)
        m_reply.abort();
}

void Download::readOn()
{
    m_body += m_reply.readAll();
    if (m_body.size() > LargestBody)
        m_reply.abort();
}

void Download::finish()
{
    m_body += m_reply.readAll();
    if (isWhole() && !m_body.isEmpty() && m_body.size() <= LargestBody)
        m_receive(m_body);
    m_reply.deleteLater();
    m_onEnd();
}

// Errors below 100 are the transport's. The others are other names of the status, where that is an
// error, but for a few which come without one.
bool Download::isWhole() const
{
    constexpr int FirstErrorPastTransport = 100;
    constexpr int FirstErrorStatus = 400;
    const auto error = m_reply.error();
    const int status = m_reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    return error == QNetworkReply::NoError ||
           (error > FirstErrorPastTransport && status >= FirstErrorStatus);
}
