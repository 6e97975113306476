// SPDX-License-Identifier: MIT
#pragma once

#include <glib-object.h>

#include <memory>

namespace hosts {

struct UnrefObject {
    void operator()(gpointer object) const { g_object_unref(object); }
};

/// Owns one reference to an object of the GObject kind, or nothing.
template <class T>
using UniqueObject = std::unique_ptr<T, UnrefObject>;

}  // namespace hosts
