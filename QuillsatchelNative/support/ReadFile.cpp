#include "support/ReadFile.h"

#include <QFile>
#include <QFileInfo>

std::optional<QByteArray> readFile(const QString &path, qint64 maximumSize)
{
    // The padding that the JSON parser requires; without it, the parser would copy the text.
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
