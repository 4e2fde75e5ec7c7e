#pragma once

#include "support/EarlierVersion.h"
#include "support/FileStamp.h"
#include "support/VersionThinning.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/// Keeps states of a document that saves replace, as files in a folder (see EarlierVersion), and
/// removes older ones (see VersionThinning). It keeps
///
/// - the state before the first save,
/// - then the first state that is replaced in each period of ten minutes with saves,
/// - and every state that another program wrote.
///
/// A state is kept as a hard link, which writes no bytes, or, where that is impossible, as a copy.
/// Missing folders are created. Failures are silent. Without a version to keep, the cost is that of
/// looking up the file's stamp.
class EarlierVersions
{
public:
    using Clock = std::function<std::chrono::system_clock::time_point()>;

    /// `document` is the document's file name, such as "prompts.json". Several documents may share
    /// the folder.
    EarlierVersions(std::filesystem::path folder, std::string document, Clock now);

    /// Call when this process is about to read the document. Any other state is foreign.
    void setRead(const std::optional<FileStamp> &stamp) { m_own = stamp; }

    /// Call when this state of the document has been kept in another way.
    void setKept(const std::optional<FileStamp> &stamp) { m_kept = stamp; }

    /// Call immediately before `file`, the document or its link target, is replaced.
    void keep(const std::filesystem::path &file);

    /// Call after the document was replaced by a file with this stamp. Removes older versions if
    /// `keep` added one.
    void setWritten(const FileStamp &stamp);

private:
    /// True for the first save of a period.
    bool beginsPeriod(std::chrono::system_clock::time_point now);
    EarlierVersion freeVersion(std::chrono::local_seconds time, bool isForeign) const;
    bool isTaken(std::chrono::local_seconds time) const;
    bool add(const std::filesystem::path &file, const VersionThinning::File &added);
    void remember(const EarlierVersion &version);
    void thin(std::uint64_t documentSize);
    void readFolder();
    std::filesystem::path pathOf(const EarlierVersion &version) const;

    std::filesystem::path m_folder;
    std::string m_document;
    Clock m_now;
    std::optional<FileStamp> m_own;  // as this process last read or wrote the document
    std::optional<FileStamp> m_kept; // the state that was kept last
    std::optional<std::chrono::system_clock::time_point> m_periodStart;
    std::vector<EarlierVersion> m_recent;       // see VersionThinning
    std::vector<VersionThinning::File> m_files; // in the folder when it had this time:
    std::optional<std::filesystem::file_time_type> m_folderTime;
    bool m_needsThinning = false;
};
