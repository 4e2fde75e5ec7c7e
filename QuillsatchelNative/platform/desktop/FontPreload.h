#pragma once

#include <QString>
#include <QStringList>

#include <thread>

/// Reads the fonts on a second thread, because this takes a large part of the time to draw the
/// first text: first the font configuration while the program connects to the display, then Qt's
/// font database while the program initializes Qt and loads its files. Create it before the
/// QApplication. The destructor waits for the thread, even if there is no QApplication. If the
/// system refuses the thread, the constructor reads the configuration, and Qt the database later.
///
/// Limits malloc to one arena for all threads.
class FontPreload
{
public:
    FontPreload();
    ~FontPreload();

    FontPreload(const FontPreload &) = delete;
    FontPreload &operator=(const FontPreload &) = delete;

    /// The family of the preferred emoji font if it is a color font, otherwise empty. Waits for the
    /// thread, so call it as late as possible.
    QString colorEmojiFamily();

    /// The family of the installed font for `families`, which may contain aliases such as "Sans
    /// Serif". Unlike QFontInfo, does not load the font.
    static QString realFamily(const QStringList &families);

private:
    void readConfiguration();
    void wait();

    QString m_colorEmojiFamily; // written by the thread, read after joining it
    std::thread m_thread;
};
