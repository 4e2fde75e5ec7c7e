#include "support/ReadFile.h"

#include <QFile>
#include <QFileInfo>

std::optional<QByteArray> readFile(const QString &path, qint64 maximumSize)
{
    // The JSON parser reads this far past the end; without the room it would copy the whole text.
    constexpr qsizetype SpareCapacity = 64;
    QFile file(path);
    // Opening a pipe would wait until another program writes into it.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) ||
        file.size() > maximumSize)
        return std::nullopt;
    QByteArray bytes;
    bytes.reserve(file.size() + SpareCapacity);
    bytes.resize(file.size());
    if (file.read(bytes.data(), bytes.size()) != bytes.size())
        return std::nullopt;
    return bytes;
}
