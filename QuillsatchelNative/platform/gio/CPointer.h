#pragma once

#include <glib-object.h>
#include <memory>

/// Frees what a C library made by the function that the library has for it.
template <auto Free>
struct FreeBy {
    template <typename Object>
    void operator()(Object *object) const
    {
        Free(object);
    }
};

template <typename Object, auto Free>
using CPointer = std::unique_ptr<Object, FreeBy<Free>>;

/// One reference to an object of GLib's kind.
template <typename Object>
using GObjectPointer = CPointer<Object, &g_object_unref>;

using GText = CPointer<char, &g_free>;
