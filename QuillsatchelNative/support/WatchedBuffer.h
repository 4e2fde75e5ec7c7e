#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QtGlobal>

/// A read-only buffer that detects reads past its end.
class WatchedBuffer : public QBuffer
{
public:
    /// Opens the buffer, without reading ahead.
    explicit WatchedBuffer(const QByteArray &bytes);

    /// Becomes false once a reader reads or seeks past the end.
    bool wasEnough() const { return m_wasEnough; }

    bool seek(qint64 position) override;

protected:
    qint64 readData(char *bytes, qint64 count) override;

private:
    bool note(bool isEnough);

    bool m_wasEnough = true;
};
