#pragma once

#include <QString>

#include <filesystem>

/// Converts paths between QString and the bytes of the file system.
namespace FilePath
{

std::filesystem::path native(const QString &path);

/// Bytes that are invalid in the locale's encoding become replacement characters.
QString text(const std::filesystem::path &path);

} // namespace FilePath
