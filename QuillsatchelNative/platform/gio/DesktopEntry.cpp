#include "platform/gio/DesktopEntry.h"

#include <cstdint>
#include <filesystem>
#include <system_error>

namespace
{

constexpr std::uintmax_t MaximumFileSize = 1024 * 1024;

bool isSafeToOpen(const std::string &path)
{
    std::error_code error;
    if (!path.starts_with('/') || path.find('\0') != std::string::npos ||
        !std::filesystem::is_regular_file(path, error))
        return false;
    const auto size = std::filesystem::file_size(path, error);
    return !error && size > 0 && size <= MaximumFileSize; // files in /proc and /sys have no size
}

/// Empty values count as missing: an entry with "Name=" has no name.
std::optional<std::string> textOf(char *value)
{
    const GText text(value);
    return text && *text ? std::optional(std::string(text.get())) : std::nullopt;
}

std::string orEmpty(const char *text)
{
    return text ? text : "";
}

void appendWord(std::string &words, const std::string &word)
{
    if (!words.empty() && !word.empty())
        words += ' ';
    words += word;
}

} // namespace

std::optional<DesktopEntry> DesktopEntry::open(const std::string &path)
{
    if (!isSafeToOpen(path))
        return std::nullopt;
    auto *const info = g_desktop_app_info_new_from_filename(path.c_str());
    return info ? std::optional(DesktopEntry(info)) : std::nullopt;
}

ApplicationNames DesktopEntry::names() const
{
    const auto textFor = [this](const std::string &key) {
        return textOf(g_desktop_app_info_get_string(info(), key.c_str()));
    };
    ApplicationNames names { .displayName = std::nullopt, .name = textFor("Name") };
    for (const char *const *language = g_get_language_names(); *language && !names.displayName;
         ++language)
        names.displayName = textFor("Name[" + std::string(*language) + "]");
    return names;
}

std::string DesktopEntry::icon() const
{
    GIcon *const icon = g_app_info_get_icon(G_APP_INFO(info()));
    if (G_IS_THEMED_ICON(icon))
        return orEmpty(*g_themed_icon_get_names(G_THEMED_ICON(icon)));
    if (G_IS_FILE_ICON(icon))
        return textOf(g_file_get_path(g_file_icon_get_file(G_FILE_ICON(icon)))).value_or("");
    return {};
}

std::string DesktopEntry::comment() const
{
    const auto comment = orEmpty(g_app_info_get_description(G_APP_INFO(info())));
    return comment.empty() ? orEmpty(g_desktop_app_info_get_generic_name(info())) : comment;
}

std::string DesktopEntry::keywords() const
{
    std::string words;
    const char *const *keyword = g_desktop_app_info_get_keywords(info());
    for (; keyword && *keyword; ++keyword)
        appendWord(words, *keyword);
    appendWord(words, orEmpty(g_desktop_app_info_get_generic_name(info())));
    const std::filesystem::path program = orEmpty(g_app_info_get_executable(G_APP_INFO(info())));
    appendWord(words, program.filename().string());
    return words;
}

bool DesktopEntry::isShown() const
{
    return !g_desktop_app_info_get_is_hidden(info()) && g_app_info_should_show(G_APP_INFO(info()));
}
