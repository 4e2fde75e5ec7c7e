#include "platform/desktop/FontPreload.h"

#include "support/CPointer.h"

#include <QFontDatabase>
#include <QGuiApplication>

#include <atomic>
#include <fontconfig/fontconfig.h>
#include <malloc.h>
#include <system_error>
#include <utility>

namespace
{

std::atomic_flag mayReadDatabase;

void allowReadingDatabase()
{
    mayReadDatabase.test_and_set();
    mayReadDatabase.notify_all();
}

// Qt calls this once it has a font database, and then initializes the rest of the application.
// cppcheck-suppress unknownMacro
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

Pattern patternOf(const QStringList &families)
{
    Pattern pattern(FcPatternCreate());
    for (const auto &family : families)
        FcPatternAddString(pattern.get(), FC_FAMILY,
                           reinterpret_cast<const FcChar8 *>(family.toUtf8().constData()));
    return pattern;
}

/// The installed font that fits best; empty if there are no fonts.
Pattern bestMatch(Pattern pattern)
{
    FcConfigSubstitute(nullptr, pattern.get(), FcMatchPattern);
    FcDefaultSubstitute(pattern.get());
    FcResult result = FcResultNoMatch;
    return Pattern(FcFontMatch(nullptr, pattern.get(), &result));
}

QString familyOf(FcPattern *font)
{
    FcChar8 *family = nullptr;
    if (FcPatternGetString(font, FC_FAMILY, 0, &family) != FcResultMatch)
        return {};
    return QString::fromUtf8(reinterpret_cast<const char *>(family));
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
    Pattern pattern = patternOf({ QStringLiteral("emoji") });
    FcPatternAddBool(pattern.get(), FC_COLOR, FcTrue);
    const Pattern font = bestMatch(std::move(pattern));
    return font && isColorEmoji(font.get()) ? familyOf(font.get()) : QString();
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

QString FontPreload::realFamily(const QStringList &families)
{
    const Pattern font = bestMatch(patternOf(families));
    return font ? familyOf(font.get()) : families.value(0);
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
