#include "support/WatchedBuffer.h"

WatchedBuffer::WatchedBuffer(const QByteArray &bytes)
{
    setData(bytes);
    QBuffer::open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

bool WatchedBuffer::seek(qint64 position)
{
    return note(position <= size()) && QBuffer::seek(position);
}

qint64 WatchedBuffer::readData(char *bytes, qint64 count)
{
    const auto read = QBuffer::readData(bytes, count);
    note(read == count);
    return read;
}

bool WatchedBuffer::note(bool isEnough)
{
    m_wasEnough = m_wasEnough && isEnough;
    return isEnough;
}
