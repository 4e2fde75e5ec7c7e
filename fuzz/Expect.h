#pragma once

#include <cstdio>
#include <cstdlib>

/// Ends the run where a promise is broken; the fuzzer then keeps the bytes that broke it.
inline void expect(bool isKept, const char *promise)
{
    if (isKept)
        return;
    std::fprintf(stderr, "Broken: %s\n", promise);
    std::abort();
}
