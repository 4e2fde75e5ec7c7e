#pragma once

#include <QString>

#include <thread>

/// Reads the font configuration on a second thread while the program connects to the display,
/// because it takes a large part of the time to draw the first text. The destructor waits for the
/// thread. If the system refuses the thread, the constructor reads the configuration.
class FontPreload
{
public:
    FontPreload();
    ~FontPreload();

    FontPreload(const FontPreload &) = delete;
    FontPreload &operator=(const FontPreload &) = delete;

    /// The family of the preferred emoji font if it is a color font, otherwise empty. Waits until
    /// the configuration is read.
    QString colorEmojiFamily();

private:
    void wait();

    QString m_colorEmojiFamily; // written by the thread, read after joining it
    std::thread m_thread;
};
