#pragma once

#include "platform/Workspace.h"
#include "support/WebAddress.h"

#include <string>
#include <vector>

/// Notes what it is asked to open.
class FakeWorkspace final : public Workspace
{
public:
    void open(const WebAddress &address) override { opened.push_back(address.absoluteString()); }

    std::vector<std::string> opened;
};
