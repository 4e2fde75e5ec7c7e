#pragma once

#include "platform/Application.h"
#include "platform/gio/GObjectPointer.h"

#include <gio/gdesktopappinfo.h>

#include <optional>
#include <string>

/// A desktop entry of an application, as GIO reads it. All texts are UTF-8 and as they stand there.
class DesktopEntry
{
public:
    /// None if what is at `path`, which must be absolute, is no entry of an application, or of one
    /// whose program is missing. Only plain files of a sensible size are opened: a pipe or a device
    /// could make us wait for ever.
    static std::optional<DesktopEntry> open(const std::string &path);

    GDesktopAppInfo *info() const { return m_info.get(); }

    /// Empty names count as missing.
    ApplicationNames names() const;

    /// A name in the icon theme or an absolute path; empty if the entry has none.
    std::string icon() const;

    /// One line about the application in the user's language, or what kind it is of, or nothing.
    std::string comment() const;

    /// Words that the entry can be found by beside its name, separated by blanks.
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
