// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace hosts {

/// What a module of ours exports under the name; null, with one line in `error` that begins with
/// "cannot load" and the module's `purpose`, when there is no such module or it has no such symbol.
///
/// Modules are for libraries that take longer to load than a program needs to read a setting. A
/// module stays for good: objects that it made may outlive whoever asked for them.
void* loadSymbol(const std::string& module, const char* name, const char* purpose, std::string& error);

/// The same for a function, whose type is the caller's word alone.
template <class Function>
Function* loadFunction(const std::string& module, const char* name, const char* purpose, std::string& error) {
    return reinterpret_cast<Function*>(loadSymbol(module, name, purpose, error));
}

}  // namespace hosts
