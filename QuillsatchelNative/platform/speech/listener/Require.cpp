#include "platform/speech/listener/Require.h"

#include <cstdlib>

void require(bool hasSucceeded)
{
    if (!hasSucceeded)
        std::_Exit(EXIT_FAILURE);
}
