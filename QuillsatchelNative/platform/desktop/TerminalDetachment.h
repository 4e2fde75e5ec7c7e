#pragma once

#include "platform/desktop/SignalHandler.h"

/// While this lives the process goes on when the terminal closes that it was started from, or
/// whoever reads what it prints ends. It also opens the standard streams that whoever started the
/// process left out: the next file opened would stand in for them, and get what libraries print.
class TerminalDetachment
{
public:
    TerminalDetachment();

private:
    SignalHandler m_hangUp;
    SignalHandler m_brokenPipe;
};
