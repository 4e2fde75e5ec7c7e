#pragma once

class SearchProvider;

/// The desktop's own search, which asks running programs.
class DesktopSearch
{
public:
    virtual ~DesktopSearch() = default;

    /// Offers the results of `provider` until it is destroyed. Call it once. Does not wait, and
    /// does nothing if the desktop has no search or another process answers it.
    virtual void begin(SearchProvider &provider) = 0;
};
