#include "platform/desktop/FontPreload.h"

#include "support/CPointer.h"

#include <fontconfig/fontconfig.h>
#include <system_error>

namespace
{

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
    const auto read = [this] {
        FcInit();
        m_colorEmojiFamily = findColorEmoji();
    };
    try {
        m_thread = std::thread(read);
    } catch (const std::system_error &) { // the system refuses the thread
        read();
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

void FontPreload::wait()
{
    if (m_thread.joinable())
        m_thread.join();
}
