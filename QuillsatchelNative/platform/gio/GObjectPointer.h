#pragma once

#include "support/CPointer.h"

#include <glib-object.h>

/// One reference to a GObject.
template <typename Object>
using GObjectPointer = CPointer<Object, &g_object_unref>;

/// A text that GLib allocated.
using GText = CPointer<char, &g_free>;
