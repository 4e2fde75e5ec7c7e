#pragma once

#include "platform/DesktopSearch.h"

/// Answers the searches of GNOME Shell and of Plasma on the session bus. Installed files tell both
/// where to ask; they ask only while this process has the program's bus name.
class DBusDesktopSearch final : public DesktopSearch
{
public:
    void begin(SearchProvider &provider) override;
};
