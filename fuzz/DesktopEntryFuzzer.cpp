// A desktop entry from any file has valid texts and reads the same twice.
#include "Expect.h"
#include "FuzzedDesktop.h"
#include "platform/gio/DesktopEntry.h"

#include <cstddef>
#include <cstdint>
#include <glib.h>
#include <string>
#include <string_view>

namespace
{

bool isText(std::string_view text)
{
    return text.find('\0') == std::string_view::npos &&
           g_utf8_validate_len(text.data(), text.size(), nullptr);
}

void expectTexts(const DesktopEntry &entry)
{
    const auto names = entry.names();
    expect(isText(names.name.value_or("")) && isText(names.displayName.value_or("")),
           "names are UTF-8");
    expect(isText(entry.comment()), "a comment is UTF-8");
    expect(isText(entry.keywords()), "keywords are UTF-8");
    expect(isText(entry.icon()), "an icon's name is UTF-8");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    static const FuzzedDesktop desktop;
    const auto path = desktop.writeFile({ reinterpret_cast<const char *>(bytes), size });
    const auto entry = DesktopEntry::open(path);
    if (!entry)
        return 0;
    expectTexts(*entry);
    const auto again = DesktopEntry::open(path);
    expect(again && again->isShown() == entry->isShown(), "an entry reads the same twice");
    return 0;
}
