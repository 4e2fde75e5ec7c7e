#pragma once

#include <cstdio>
#include <cstdlib>

/// Aborts unless `isMet`; the fuzzer then saves the input.
inline void expect(bool isMet, const char *expectation)
{
    if (isMet)
        return;
    std::fprintf(stderr, "Failed: %s\n", expectation);
    std::abort();
}
