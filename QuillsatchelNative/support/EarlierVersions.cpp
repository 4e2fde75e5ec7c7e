#include "support/EarlierVersions.h"

#include "support/CopyFile.h"
#include "support/UnfinishedFile.h"

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <sys/stat.h>
#include <system_error>
#include <utility>

namespace
{

namespace fs = std::filesystem;
using namespace std::chrono;

local_seconds localTime(system_clock::time_point time)
{
    const auto seconds = system_clock::to_time_t(time);
    std::tm parts {};
    tzset(); // the time zone of the system may have changed
    localtime_r(&seconds, &parts);
    return local_seconds(std::chrono::seconds(seconds + parts.tm_gmtoff));
}

/// Creates missing folders for their owner only.
void createFolder(const fs::path &folder)
{
    constexpr mode_t OwnerOnly = 0700;
    if (mkdir(folder.c_str(), OwnerOnly) == 0 || errno != ENOENT || !folder.has_parent_path())
        return;
    createFolder(folder.parent_path());
    mkdir(folder.c_str(), OwnerOnly);
}

bool linkTo(const fs::path &file, const fs::path &name)
{
    std::error_code error;
    fs::create_hard_link(file, name, error);
    return !error;
}

bool copyTo(const fs::path &file, const fs::path &name)
{
    UnfinishedFile::removeLeftovers(name.parent_path());
    return copyFile(file, name);
}

fs::file_time_type timeOf(const fs::path &folder)
{
    std::error_code error;
    return fs::last_write_time(folder, error);
}

/// None unless it is a regular file.
std::optional<std::uint64_t> sizeOf(const fs::directory_entry &entry)
{
    std::error_code error;
    const auto stamp = entry.is_symlink(error) ? std::nullopt : FileStamp::of(entry.path());
    return stamp ? std::optional(stamp->size) : std::nullopt;
}

// A link has the permissions of the document. While it has another name too, they are not ours.
void makePrivate(const fs::path &version)
{
    std::error_code error;
    if (fs::hard_link_count(version, error) == 1)
        fs::permissions(version, fs::perms::owner_read | fs::perms::owner_write, error);
}

} // namespace

EarlierVersions::EarlierVersions(fs::path folder, std::string document, Clock now)
    : m_folder(std::move(folder))
    , m_document(std::move(document))
    , m_now(std::move(now))
{
}

void EarlierVersions::keep(const fs::path &file)
{
    const auto now = m_now();
    const auto stamp = FileStamp::of(file);
    const bool isForeign = m_own && stamp != m_own;
    const bool isWanted = beginsPeriod(now) || isForeign;
    if (!isWanted || !stamp || stamp == m_kept)
        return;
    if (add(file, { freeVersion(localTime(now), isForeign), stamp->size }))
        m_kept = stamp;
}

void EarlierVersions::setWritten(const FileStamp &stamp)
{
    m_own = stamp;
    if (!std::exchange(m_needsThinning, false))
        return;
    makePrivate(pathOf(m_recent.back()));
    thin(stamp.size);
}

bool EarlierVersions::beginsPeriod(system_clock::time_point now)
{
    // A start in the future means that the clock was set back.
    if (m_periodStart && *m_periodStart <= now && now < *m_periodStart + minutes(10))
        return false;
    m_periodStart = now;
    return true;
}

// After the clock was set back, an earlier version may have the same time.
EarlierVersion EarlierVersions::freeVersion(local_seconds time, bool isForeign) const
{
    while (isTaken(time))
        ++time;
    return { .time = time, .isForeign = isForeign };
}

bool EarlierVersions::isTaken(local_seconds time) const
{
    const auto exists = [this, time](bool isForeign) {
        std::error_code error;
        return fs::exists(fs::symlink_status(pathOf({ time, isForeign }), error));
    };
    return exists(false) || exists(true);
}

bool EarlierVersions::add(const fs::path &file, const VersionThinning::File &added)
{
    createFolder(m_folder);
    if (m_folderTime != timeOf(m_folder))
        readFolder();
    const auto path = pathOf(added.version);
    if (!linkTo(file, path) && !copyTo(file, path))
        return false;
    m_files.push_back(added);
    remember(added.version);
    m_needsThinning = true;
    return true;
}

void EarlierVersions::remember(const EarlierVersion &version)
{
    m_recent.push_back(version);
    const auto isSameKind = [&version](const EarlierVersion &other) {
        return other.isForeign == version.isForeign;
    };
    if (std::ranges::count_if(m_recent, isSameKind) > VersionThinning::RecentCount)
        m_recent.erase(std::ranges::find_if(m_recent, isSameKind));
}

void EarlierVersions::thin(std::uint64_t documentSize)
{
    const auto superfluous =
        VersionThinning::superfluous(m_files, m_recent, localTime(m_now()), documentSize);
    for (const auto &version : superfluous) {
        std::error_code error;
        fs::remove(pathOf(version), error);
        std::erase_if(m_files, [&](const auto &file) { return file.version == version; });
    }
    m_folderTime = timeOf(m_folder);
}

void EarlierVersions::readFolder()
{
    std::error_code error;
    m_files.clear();
    for (fs::directory_iterator entry(m_folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const auto name = entry->path().filename();
        const auto version = EarlierVersion::fromFileName(name.native(), m_document);
        if (const auto size = version ? sizeOf(*entry) : std::nullopt)
            m_files.push_back({ *version, *size });
    }
    if (error) // remove nothing that may represent versions which were not listed
        m_files.clear();
}

fs::path EarlierVersions::pathOf(const EarlierVersion &version) const
{
    return m_folder / version.fileName(m_document);
}
