#include "platform/gio/GioWorkspace.h"

#include <memory>

extern "C" Q_DECL_EXPORT Workspace *make();

Workspace *make()
{
    return std::make_unique<GioWorkspace>().release();
}
