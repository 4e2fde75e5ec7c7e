#pragma once

#include <memory>

/// Calls `Free`, a function that frees objects of a C library.
template <auto Free>
struct FreeBy {
    template <typename Object>
    void operator()(Object *object) const
    {
        Free(object);
    }
};

/// Owns an object of a C library, as in `CPointer<FILE, &std::fclose>`.
template <typename Object, auto Free>
using CPointer = std::unique_ptr<Object, FreeBy<Free>>;
