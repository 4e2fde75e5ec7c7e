#include "platform/desktop/FontPreload.h"

#include "support/CPointer.h"

#include <QFontDatabase>
#include <QGuiApplication>

#include <atomic>
#include <fontconfig/fontconfig.h>
#include <malloc.h>
#include <system_error>

namespace
{

std::atomic_flag mayReadDatabase;

void allowReadingDatabase()
{
    mayReadDatabase.test_and_set();
    mayReadDatabase.notify_all();
}

// Qt calls this once it has a font database, and then initializes the rest of the application.
Q_COREAPP_STARTUP_FUNCTION(allowReadingDatabase)

// QFontDatabase locks a mutex, so the main thread waits if it needs a font in the meantime.
void readDatabase()
{
    mayReadDatabase.wait(false);
    if (qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
        QFontDatabase::isFixedPitch(QString()); // any query reads the database
}

using Pattern = CPointer<FcPattern, &FcPatternDestroy>;

constexpr FcChar32 GrinningFace = 0x1F600;

Pattern emojiPattern()
{
    Pattern pattern(FcPatternCreate());
    FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<const FcChar8 *>("emoji"));
    FcPatternAddBool(pattern.get(), FC_COLOR, FcTrue);
    FcConfigSubstitute(nullptr, pattern.get(), FcMatchPattern);
    FcDefaultSubstitute(pattern.get());
    return pattern;
}

bool isColorEmoji(FcPattern *font)
{
    FcBool isColor = FcFalse;
    FcCharSet *characters = nullptr;
    return FcPatternGetBool(font, FC_COLOR, 0, &isColor) == FcResultMatch && isColor &&
           FcPatternGetCharSet(font, FC_CHARSET, 0, &characters) == FcResultMatch &&
           FcCharSetHasChar(characters, GrinningFace);
}

QString findColorEmoji()
{
    FcResult result = FcResultNoMatch;
    const Pattern font(FcFontMatch(nullptr, emojiPattern().get(), &result));
    FcChar8 *family = nullptr;
    if (!font || !isColorEmoji(font.get()) ||
        FcPatternGetString(font.get(), FC_FAMILY, 0, &family) != FcResultMatch)
        return {};
    return QString::fromUtf8(reinterpret_cast<const char *>(family));
}

} // namespace

FontPreload::FontPreload()
{
    // What Qt keeps of the fonts outlives the thread, whose heap would stay nearly empty.
    mallopt(M_ARENA_MAX, 1);
    try {
        m_thread = std::thread([this] {
            readConfiguration();
            readDatabase();
        });
    } catch (const std::system_error &) { // the system refuses the thread
        readConfiguration();
    }
}

FontPreload::~FontPreload()
{
    wait();
}

QString FontPreload::colorEmojiFamily()
{
    wait();
    return m_colorEmojiFamily;
}

void FontPreload::readConfiguration()
{
    FcInit();
    m_colorEmojiFamily = findColorEmoji();
}

void FontPreload::wait()
{
    allowReadingDatabase(); // the thread must not wait for an application that is never created
    if (m_thread.joinable())
        m_thread.join();
}
