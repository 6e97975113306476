// SPDX-License-Identifier: MIT
#include "hosts/hand_over/desktop.h"

#include "hosts/system/module_function.h"

namespace hosts {

platform::Result<DesktopLibrary*> Desktop::library() {
    if (_library) return _library.get();
    if (_loadingProblem) return *_loadingProblem;
    auto make = loadFunction<MakeDesktopLibrary>(_module, makeDesktopLibrarySymbol, "the desktop module");
    if (!make) return _loadingProblem.emplace(std::move(make).error());
    (*make)(_library);
    return _library.get();
}

std::optional<std::string> Desktop::handlerOfType(const std::string& contentType) {
    const auto found = library();
    return found ? (*found)->handlerOf(contentType) : std::nullopt;
}

std::optional<std::string> Desktop::handlerOfScheme(const std::string& scheme) {
    return handlerOfType("x-scheme-handler/" + scheme);
}

}  // namespace hosts
