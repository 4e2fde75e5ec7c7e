#include "platform/gio/GioWorkspace.h"

#include <memory>

extern "C" Q_DECL_EXPORT Workspace *make(MainQueue &mainQueue);

Workspace *make(MainQueue &mainQueue)
{
    return std::make_unique<GioWorkspace>(mainQueue).release();
}
