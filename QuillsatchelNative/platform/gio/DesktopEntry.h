#pragma once

#include "platform/Application.h"
#include "platform/gio/GObjectPointer.h"

#include <gio/gdesktopappinfo.h>

#include <optional>
#include <string>

/// The desktop entry of an application, read by GIO. All texts are UTF-8 and unchanged.
class DesktopEntry
{
public:
    /// None if the file at `path`, which must be absolute, is not the entry of an application with
    /// an installed program. Opens only regular files of up to 1 MiB, because a pipe or device
    /// could block forever.
    static std::optional<DesktopEntry> open(const std::string &path);

    GDesktopAppInfo *info() const { return m_info.get(); }

    /// An empty name counts as missing.
    ApplicationNames names() const;

    /// A name in the icon theme or an absolute path; empty if the entry has none.
    std::string icon() const;

    /// The comment in the user's language, or else the generic name; may be empty.
    std::string comment() const;

    /// Search terms besides the name, separated by spaces: keywords, generic name and program.
    std::string keywords() const;

    /// Whether menus show the application, here and on this desktop.
    bool isShown() const;

private:
    explicit DesktopEntry(GDesktopAppInfo *info)
        : m_info(info)
    {
    }

    GObjectPointer<GDesktopAppInfo> m_info;
};
