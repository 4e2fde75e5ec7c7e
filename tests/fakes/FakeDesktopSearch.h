#pragma once

#include "platform/DesktopSearch.h"
#include "platform/SearchProvider.h"

/// The test asks what the desktop's search would ask.
class FakeDesktopSearch final : public DesktopSearch
{
public:
    void begin(SearchProvider &begun) override { provider = &begun; }

    SearchProvider *provider = nullptr; ///< null before `begin`
};
