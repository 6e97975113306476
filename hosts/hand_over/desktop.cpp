// SPDX-License-Identifier: MIT
#include "hosts/hand_over/desktop.h"

#include "hosts/system/module_function.h"

namespace hosts {

DesktopLibrary* Desktop::library(std::string& error) {
    if (!_library && _loadingError.empty()) {
        auto* const make =
            loadFunction<MakeDesktopLibrary>(_module, makeDesktopLibrarySymbol, "the desktop module", _loadingError);
        if (make != nullptr) make(_library);
    }
    if (!_library) error = _loadingError;
    return _library.get();
}

std::optional<std::string> Desktop::handlerOfType(const std::string& contentType) {
    std::string ignored;
    DesktopLibrary* const desktop = library(ignored);
    return desktop == nullptr ? std::nullopt : desktop->handlerOf(contentType);
}

std::optional<std::string> Desktop::handlerOfScheme(const std::string& scheme) {
    return handlerOfType("x-scheme-handler/" + scheme);
}

}  // namespace hosts
