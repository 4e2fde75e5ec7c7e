#include "platform/gio/InstalledApplications.h"

#include "platform/gio/DesktopEntry.h"

#include <QCollator>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <system_error>

namespace InstalledApplications
{

namespace
{

/// Desktop entries by id: the path relative to the folder, with dashes for slashes.
class EntryFiles
{
public:
    /// Existing entries take precedence.
    void add(const std::filesystem::path &folder, const std::string &idPrefix = {})
    {
        std::error_code error;
        const auto canonical = std::filesystem::canonical(folder, error);
        if (error || !m_visited.insert(canonical).second) // links can form cycles
            return;
        for (std::filesystem::directory_iterator file(folder, error), end; !error && file != end;
             file.increment(error))
            addFile(*file, idPrefix);
    }

    const std::map<std::string, std::filesystem::path> &byId() const { return m_byId; }

private:
    void addFile(const std::filesystem::directory_entry &file, const std::string &idPrefix)
    {
        std::error_code error;
        const auto id = idPrefix + file.path().filename().string();
        if (file.is_directory(error))
            add(file.path(), id + '-');
        else if (file.path().extension() == ".desktop")
            m_byId.try_emplace(id, file.path());
    }

    std::map<std::string, std::filesystem::path> m_byId;
    std::set<std::filesystem::path> m_visited;
};

Application describe(const std::string &path, const DesktopEntry &entry)
{
    const auto names = entry.names();
    const auto fileName = std::filesystem::path(path).stem().string();
    return { .path = path,
             .name = names.displayName.value_or(names.name.value_or(fileName)),
             .comment = entry.comment(),
             .keywords = entry.keywords() };
}

void sortByName(std::vector<Application> &applications)
{
    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    const auto isBefore = [&collator](const Application &one, const Application &other) {
        const int order =
            collator.compare(QString::fromStdString(one.name), QString::fromStdString(other.name));
        return order != 0 ? order < 0 : one.path < other.path;
    };
    std::sort(applications.begin(), applications.end(), isBefore);
}

bool isUtf8(const std::string &text)
{
    return g_utf8_validate_len(text.data(), text.size(), nullptr);
}

} // namespace

std::vector<std::filesystem::path> folders()
{
    const std::filesystem::path userData = g_get_user_data_dir();
    std::vector<std::filesystem::path> dataFolders { userData };
    for (const char *const *folder = g_get_system_data_dirs(); *folder; ++folder)
        dataFolders.emplace_back(*folder);
    dataFolders.push_back(userData / "flatpak/exports/share");
    dataFolders.emplace_back("/var/lib/flatpak/exports/share");
    dataFolders.emplace_back("/var/lib/snapd/desktop");
    for (auto &folder : dataFolders)
        folder /= "applications";
    return dataFolders;
}

std::vector<Application> list(const std::vector<std::filesystem::path> &folders,
                              const std::stop_token &stop)
{
    EntryFiles files;
    for (const auto &folder : folders)
        files.add(folder);
    std::vector<Application> applications;
    for (const auto &[id, file] : files.byId()) {
        if (stop.stop_requested())
            break;
        const auto entry = isUtf8(file) ? DesktopEntry::open(file) : std::nullopt;
        if (entry && entry->isShown())
            applications.push_back(describe(file, *entry));
    }
    sortByName(applications);
    return applications;
}

} // namespace InstalledApplications
