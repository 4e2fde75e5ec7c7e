#include "platform/desktop/FontPreload.h"

#include <fontconfig/fontconfig.h>

FontPreload::FontPreload()
    : m_thread([] { FcInit(); })
{
}
