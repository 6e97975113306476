// SPDX-License-Identifier: MIT
#include "hosts/system/module_function.h"

#include <dlfcn.h>

namespace hosts {

platform::Result<void*> loadSymbol(const std::string& module, const char* name, const char* purpose) {
    void* const loaded = ::dlopen(module.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    void* const symbol = loaded == nullptr ? nullptr : ::dlsym(loaded, name);
    if (symbol != nullptr) return symbol;
    const char* const reason = ::dlerror();
    return platform::Problem{{}, std::string{"cannot load "} + purpose, reason == nullptr ? module : reason};
}

}  // namespace hosts
