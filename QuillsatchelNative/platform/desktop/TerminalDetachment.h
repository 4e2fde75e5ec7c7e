#pragma once

#include "platform/desktop/SignalHandler.h"

/// Keeps the process running when its terminal closes or the reader of its output ends. Also opens
/// missing standard streams, because the next opened file would otherwise get their number, and
/// what libraries print.
class TerminalDetachment
{
public:
    TerminalDetachment();

private:
    SignalHandler m_hangUp;
    SignalHandler m_brokenPipe;
};
