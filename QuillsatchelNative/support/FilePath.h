#pragma once

#include <QString>

#include <filesystem>

/// Converts paths between Qt's texts and the system's bytes.
namespace FilePath
{

std::filesystem::path native(const QString &path);

/// Bytes that are no text in the locale's encoding become replacement characters.
QString text(const std::filesystem::path &path);

} // namespace FilePath
