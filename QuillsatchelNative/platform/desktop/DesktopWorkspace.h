#pragma once

#include "platform/Workspace.h"

/// Opens things through the desktop portal or xdg-open, whichever the session has.
class DesktopWorkspace final : public Workspace
{
public:
    void open(const WebAddress &address) override;
};
