#include "support/UnfinishedFile.h"

#include "support/FilePath.h"
#include "support/LinkTarget.h"
#include "support/WriteAll.h"

#include <algorithm>
#include <cstdio>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace
{

namespace fs = std::filesystem;

// Temporary names are the target's name followed by this suffix and random letters. Users will not
// choose such names, so leftovers can be deleted safely.
constexpr std::string_view Suffix = ".saving-";
constexpr std::string_view RandomLetters = "XXXXXX";

QString nameTemplate(const fs::path &target)
{
    return FilePath::text(target) + QLatin1String(Suffix.data()) +
           QLatin1String(RandomLetters.data());
}

bool isAsciiLetter(char character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

/// Whether `name` is a temporary name for the file named `target`, or for any file if that is
/// empty.
bool isTemporaryName(std::string_view name, std::string_view target)
{
    if (name.size() <= Suffix.size() + RandomLetters.size())
        return false;
    const auto letters = name.substr(name.size() - RandomLetters.size());
    name.remove_suffix(letters.size());
    if (!name.ends_with(Suffix) || !std::ranges::all_of(letters, isAsciiLetter))
        return false;
    name.remove_suffix(Suffix.size());
    return target.empty() || name == target;
}

std::vector<fs::directory_entry> entriesOf(const fs::path &folder)
{
    std::error_code error;
    std::vector<fs::directory_entry> entries;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error))
        entries.push_back(*entry);
    return entries;
}

void removeFile(const fs::directory_entry &entry)
{
    std::error_code error;
    if (entry.symlink_status(error).type() == fs::file_type::regular)
        fs::remove(entry.path(), error);
}

void removeLeftoversOf(const fs::path &target)
{
    for (const auto &entry : entriesOf(target.parent_path()))
        if (isTemporaryName(entry.path().filename().native(), target.filename().native()))
            removeFile(entry);
}

} // namespace

UnfinishedFile::UnfinishedFile(const fs::path &target)
    : m_target(target)
    , m_file(nameTemplate(target))
{
    m_hasFailed = !m_file.open();
}

void UnfinishedFile::write(std::string_view piece)
{
    constexpr std::size_t WritebackSize = 1024 * 1024;
    m_hasFailed = m_hasFailed || !writeAll(descriptor(), piece);
    m_dirtySize += piece.size();
    if (m_dirtySize < WritebackSize)
        return;
    // The disk writes while the caller produces the next pieces, which shortens the flush.
    sync_file_range(descriptor(), 0, 0, SYNC_FILE_RANGE_WRITE);
    m_dirtySize = 0;
}

bool UnfinishedFile::flush()
{
    return !m_hasFailed && fsync(descriptor()) == 0;
}

bool UnfinishedFile::replaceTarget()
{
    // On file systems with unnamed files, this call gives the file its temporary name.
    const auto name = FilePath::native(m_file.fileName());
    if (name.empty() || std::rename(name.c_str(), m_target.c_str()) != 0)
        return false;
    m_file.setAutoRemove(false);
    return true;
}

void UnfinishedFile::removeLeftovers(const fs::path &folder)
{
    for (const auto &entry : entriesOf(folder)) {
        std::error_code error;
        if (!entry.is_symlink(error)) {
            if (isTemporaryName(entry.path().filename().native(), {}))
                removeFile(entry);
        } else if (const auto target = linkTarget(entry.path())) {
            removeLeftoversOf(*target);
        }
    }
}
