#pragma once

#include <QString>

#include <thread>

/// Reads the system's font configuration on a second thread while the program connects to the
/// display: it is a good part of what drawing the first letter costs. The destructor waits for it.
/// Without a second thread, if the system allows none, the constructor reads it.
class FontPreload
{
public:
    FontPreload();
    ~FontPreload();

    FontPreload(const FontPreload &) = delete;
    FontPreload &operator=(const FontPreload &) = delete;

    /// The family of the font that the configuration prefers for emoji, if it is a color font;
    /// otherwise empty. Waits until the configuration is read.
    QString colorEmojiFamily();

private:
    void wait();

    QString m_colorEmojiFamily; // the thread's until it has ended
    std::thread m_thread;
};
