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

// A temporary name is that of the finished file with this behind it. Users choose no such names, as
// they may well choose "prompts.json.backup", so leftovers can be deleted safely.
constexpr std::string_view Mark = ".saving-";
constexpr std::string_view RandomLetters = "XXXXXX";

QString nameTemplate(const fs::path &finished)
{
    return FilePath::text(finished) + QLatin1String(Mark.data()) +
           QLatin1String(RandomLetters.data());
}

bool isAsciiLetter(char character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

/// Whether `name` is a temporary name for the file named `finished`, or for any if that is empty.
bool isUnfinished(std::string_view name, std::string_view finished)
{
    if (name.size() <= Mark.size() + RandomLetters.size())
        return false;
    const auto letters = name.substr(name.size() - RandomLetters.size());
    name.remove_suffix(letters.size());
    if (!name.ends_with(Mark) || !std::ranges::all_of(letters, isAsciiLetter))
        return false;
    name.remove_suffix(Mark.size());
    return finished.empty() || name == finished;
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

void removeLeftoversOf(const fs::path &finished)
{
    for (const auto &entry : entriesOf(finished.parent_path()))
        if (isUnfinished(entry.path().filename().native(), finished.filename().native()))
            removeFile(entry);
}

} // namespace

UnfinishedFile::UnfinishedFile(const fs::path &finished)
    : m_finished(finished)
    , m_file(nameTemplate(finished))
{
    m_file.open();
}

void UnfinishedFile::write(std::string_view piece)
{
    constexpr std::size_t BytesWorthStarting = 1024 * 1024;
    m_isWhole = m_isWhole && writeAll(descriptor(), piece);
    m_waiting += piece.size();
    if (m_waiting < BytesWorthStarting)
        return;
    // The disk writes these while the next are made, so that the flush has little left to wait for.
    sync_file_range(descriptor(), 0, 0, SYNC_FILE_RANGE_WRITE);
    m_waiting = 0;
}

bool UnfinishedFile::flush()
{
    return m_isWhole && fsync(descriptor()) == 0;
}

bool UnfinishedFile::takePlace()
{
    // Where the file system has files without names, this one gets its temporary name only here.
    const auto name = FilePath::native(m_file.fileName());
    if (name.empty() || std::rename(name.c_str(), m_finished.c_str()) != 0)
        return false;
    m_file.setAutoRemove(false);
    return true;
}

void UnfinishedFile::removeLeftovers(const fs::path &folder)
{
    for (const auto &entry : entriesOf(folder)) {
        std::error_code error;
        if (!entry.is_symlink(error)) {
            if (isUnfinished(entry.path().filename().native(), {}))
                removeFile(entry);
        } else if (const auto target = linkTarget(entry.path())) {
            removeLeftoversOf(*target);
        }
    }
}
