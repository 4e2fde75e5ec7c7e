#include "support/FilePath.h"

#include <QFile>

namespace FilePath
{

std::filesystem::path native(const QString &path)
{
    return QFile::encodeName(path).toStdString();
}

QString text(const std::filesystem::path &path)
{
    return QFile::decodeName(path.c_str());
}

} // namespace FilePath
