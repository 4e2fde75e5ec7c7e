#pragma once

#include <QTemporaryDir>

#include <filesystem>
#include <string>
#include <string_view>

/// A bare desktop of the fuzzer's own: German, without display, bus or icon theme, and with a
/// folder for files. One in a process.
class FuzzedDesktop
{
public:
    /// Hides the machine's desktop from GIO and Qt, and makes Qt's application.
    FuzzedDesktop();

    /// Where the bytes now are, in a file of the desktop's only; what was in it is gone.
    std::string fileOf(std::string_view bytes) const;

private:
    QTemporaryDir m_folder;
    std::filesystem::path m_file = m_folder.filePath(QStringLiteral("file")).toStdString();
};
