// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "platform/foundation/export.h"
#include "platform/foundation/object.h"

namespace platform {

/// What objects live in. Nothing here looks into it: it is handed on to those who make them.
struct Platform;

/// A class that can be looked up by name.
struct Class {
    std::string name;
    /// Makes an object that lives in the given platform.
    std::function<std::shared_ptr<Object>(Platform&)> make;
    /// The class-load step; may be empty.
    std::function<void(Platform&)> initialize = {};
};

/// The classes of one Settings process, by name.
class TRIVEL3_PLATFORM_EXPORT ClassRegistry {
public:
    /// Adds a class. A name that is taken keeps its first class, so that loading a module twice
    /// changes nothing.
    void add(Class added);

    /// Whether the class exists (`NSClassFromString`). Asking does not count as using it.
    bool contains(std::string_view name) const { return _entries.contains(name); }

    /// Makes an object of the named class, or nothing when there is no such class or it is no `T`.
    /// Before a class's first use its `initialize` runs, once.
    template <class T>
    std::shared_ptr<T> make(std::string_view name, Platform& platform) {
        return std::dynamic_pointer_cast<T>(makeObject(name, platform));
    }

    /// The one shared object of the named class, made when it is first asked for.
    template <class T>
    std::shared_ptr<T> shared(std::string_view name, Platform& platform) {
        return std::dynamic_pointer_cast<T>(sharedObject(name, platform));
    }

private:
    struct Entry {
        Class definition;
        bool initialized = false;
        std::shared_ptr<Object> shared;
    };

    std::shared_ptr<Object> makeObject(std::string_view name, Platform& platform);
    std::shared_ptr<Object> sharedObject(std::string_view name, Platform& platform);
    std::shared_ptr<Object> makeObject(Entry& entry, Platform& platform);

    std::map<std::string, Entry, std::less<>> _entries;
};

/// Adds a class under its own name. `T` need only be declared here: the file that defines the class
/// instantiates this, with `class_definition.h`.
template <class T>
TRIVEL3_PLATFORM_EXPORT void addClass(ClassRegistry& classes);

/// The one symbol that a bundle's module exports: `extern "C" void trivel3RegisterClasses(ClassRegistry&)`
/// adds the module's classes.
using RegisterClasses = void(ClassRegistry&);
inline constexpr const char* registerClassesSymbol = "trivel3RegisterClasses";

}  // namespace platform
