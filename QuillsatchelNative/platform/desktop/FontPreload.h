#pragma once

#include <thread>

/// Reads the system's font configuration on a thread of its own, while the program connects to
/// the display: it is a good part of what drawing the first letter costs. Lasts until it is done.
class FontPreload
{
public:
    FontPreload();

    ~FontPreload() { m_thread.join(); }

    FontPreload(const FontPreload &) = delete;
    FontPreload &operator=(const FontPreload &) = delete;

private:
    std::thread m_thread;
};
