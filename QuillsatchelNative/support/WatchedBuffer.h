#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QtGlobal>

/// Bytes to read that know whether their reader wanted more of them than there are.
class WatchedBuffer : public QBuffer
{
public:
    /// Open from the start. Nothing is read ahead.
    explicit WatchedBuffer(const QByteArray &bytes);

    /// False for good once a reader asked for bytes, or went to a place, behind the end.
    bool wasEnough() const { return m_wasEnough; }

    bool seek(qint64 place) override;

protected:
    qint64 readData(char *bytes, qint64 count) override;

private:
    bool note(bool isEnough);

    bool m_wasEnough = true;
};
