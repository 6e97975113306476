// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>

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

/// The one object of a module that is loaded when it is first asked for. A module that cannot be loaded is
/// tried once.
template <class Interface>
class ModuleObject {
public:
    /// The module's one entry point, which the module exports under `name`.
    using Make = void(std::unique_ptr<Interface>& object);

    /// `module` is the module's path. `name` and `purpose` are literals.
    ModuleObject(std::string module, const char* name, const char* purpose)
        : _module(std::move(module)), _name(name), _purpose(purpose) {}

    platform::Result<Interface*> get() {
        if (_object) return _object.get();
        if (_loadingProblem) return *_loadingProblem;
        const auto make = loadFunction<Make>(_module, _name, _purpose);
        if (!make) return _loadingProblem.emplace(make.error());
        (*make)(_object);
        return _object.get();
    }

private:
    std::string _module;
    const char* _name;
    const char* _purpose;
    std::optional<platform::Problem> _loadingProblem;
    std::unique_ptr<Interface> _object;
};

}  // namespace hosts
