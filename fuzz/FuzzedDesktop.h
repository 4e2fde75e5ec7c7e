#pragma once

#include <QTemporaryDir>

#include <filesystem>
#include <string>
#include <string_view>

/// An isolated German desktop without display, bus and icon theme, with a folder for files. Create
/// only one per process.
class FuzzedDesktop
{
public:
    /// Hides the machine's desktop from GIO and Qt, and creates the QGuiApplication.
    FuzzedDesktop();

    /// Writes the bytes to the only file, and returns its path.
    std::string writeFile(std::string_view bytes) const;

private:
    QTemporaryDir m_folder;
    std::filesystem::path m_file = m_folder.filePath(QStringLiteral("file")).toStdString();
};
