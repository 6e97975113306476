// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "platform/foundation/result.h"

namespace hosts {

/// What a module of ours exports under the name. The problem says "cannot load" and the module's
/// `purpose`, when there is no such module or it has no such symbol.
///
/// Modules are for libraries that take longer to load than a program needs to read a setting. A
/// module stays for good: objects that it made may outlive whoever asked for them.
platform::Result<void*> loadSymbol(const std::string& module, const char* name, const char* purpose);

/// The same for a function, whose type is the caller's word alone.
template <class Function>
platform::Result<Function*> loadFunction(const std::string& module, const char* name, const char* purpose) {
    auto symbol = loadSymbol(module, name, purpose);
    if (!symbol) return std::move(symbol).error();
    return reinterpret_cast<Function*>(*symbol);
}

}  // namespace hosts
