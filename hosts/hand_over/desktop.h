// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "hosts/hand_over/desktop_library.h"

namespace hosts {

/// The user's desktop: which programs open what, and where files belong. Nothing is loaded before
/// the first question.
class Desktop {
public:
    /// `module` is the path of the module that asks the desktop's own library.
    explicit Desktop(std::string module) : _module(std::move(module)) {}

    /// The desktop's library. Null, with one line in `error`, when the module cannot be loaded.
    DesktopLibrary* library(std::string& error);

    /// The name of the program that opens content of this MIME type, or URLs of this scheme; nothing
    /// when there is none, or no way to tell.
    std::optional<std::string> handlerOfType(const std::string& contentType);
    std::optional<std::string> handlerOfScheme(const std::string& scheme);

private:
    std::string _module;
    std::string _loadingError;
    std::unique_ptr<DesktopLibrary> _library;
};

}  // namespace hosts
