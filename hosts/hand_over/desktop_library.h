// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>

namespace hosts {

/// What the desktop's own library knows of the user's programs and folders. It takes longer to load
/// than a program needs to read a setting, so this interface is implemented in a module that is
/// loaded when it is wanted.
class DesktopLibrary {
public:
    virtual ~DesktopLibrary() = default;

    /// The name of the program that opens content of this MIME type, as a user reads it; nothing
    /// when none claims the type itself. A URL scheme's type is "x-scheme-handler/SCHEME".
    virtual std::optional<std::string> handlerOf(const std::string& contentType) = 0;

    /// Where the user's documents go: the folder that XDG_DOCUMENTS_DIR names, else the one that the
    /// user has configured, else ~/Documents when it is there, else the home folder.
    virtual std::string documentsFolder() = 0;

    /// Where files go that nobody misses when they are gone.
    virtual std::string cacheFolder() = 0;
};

/// The module's one entry point, under the name `makeDesktopLibrarySymbol`.
using MakeDesktopLibrary = void(std::unique_ptr<DesktopLibrary>& library);
constexpr const char* makeDesktopLibrarySymbol = "trivel3MakeDesktopLibrary";

}  // namespace hosts
