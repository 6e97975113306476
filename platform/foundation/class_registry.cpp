// SPDX-License-Identifier: MIT
#include "platform/foundation/class_registry.h"

namespace platform {

// Out of line, so that the type information stands in the platform library alone and casts hold
// across every module that is loaded.
Object::~Object() = default;

void ClassRegistry::add(Class added) {
    std::string name = added.name;
    _entries.try_emplace(std::move(name), Entry{std::move(added), false, nullptr});
}

std::shared_ptr<Object> ClassRegistry::makeObject(std::string_view name, Platform& platform) {
    auto found = _entries.find(name);
    return found == _entries.end() ? nullptr : makeObject(found->second, platform);
}

std::shared_ptr<Object> ClassRegistry::sharedObject(std::string_view name, Platform& platform) {
    auto found = _entries.find(name);
    if (found == _entries.end()) return nullptr;
    Entry& entry = found->second;
    if (!entry.shared) entry.shared = makeObject(entry, platform);
    return entry.shared;
}

std::shared_ptr<Object> ClassRegistry::makeObject(Entry& entry, Platform& platform) {
    if (!entry.initialized) {
        // Marked first: a class-load step may load bundles that use this very class.
        entry.initialized = true;
        if (entry.definition.initialize) entry.definition.initialize(platform);
    }
    return entry.definition.make(platform);
}

}  // namespace platform
