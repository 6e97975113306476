// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "hosts/system/module_function.h"
#include "platform/foundation/result.h"

namespace hosts {

/// Where the user's documents go: the folder that XDG_DOCUMENTS_DIR names, else the one that the user has configured,
/// else ~/Documents.
struct DocumentsFolder {
    /// Where that is the home folder itself, which is how desktops say that there is none: ~/Documents, to suggest.
    std::string path;
    /// Whether the user has this folder. Otherwise nothing goes there before they have agreed to it.
    bool isThere = false;
};

/// What the desktop's own library knows of the user's programs and folders. It takes longer to load
/// than a program needs to read a setting, so this interface is implemented in a module that is
/// loaded when it is wanted.
class DesktopLibrary {
public:
    virtual ~DesktopLibrary() = default;

    /// The name of the program that opens content of this MIME type, as a user reads it; nothing
    /// when none claims the type itself. A URL scheme's type is "x-scheme-handler/SCHEME".
    virtual std::optional<std::string> handlerOf(const std::string& contentType) = 0;

    virtual DocumentsFolder documentsFolder() = 0;

    /// Where files go that nobody misses when they are gone.
    virtual std::string cacheFolder() = 0;
};

/// The name of the module's one entry point, a `ModuleObject<DesktopLibrary>::Make`.
constexpr const char* makeDesktopLibrarySymbol = "trivel3MakeDesktopLibrary";

/// The user's desktop: which programs open what, and where files belong. Nothing is loaded before
/// the first question.
class Desktop {
public:
    /// `module` is the path of the module that asks the desktop's own library.
    explicit Desktop(std::string module)
        : _library(std::move(module), makeDesktopLibrarySymbol, "the desktop module") {}

    /// The desktop's library, once its module could be loaded.
    platform::Result<DesktopLibrary*> library() { return _library.get(); }

    /// The name of the program that opens content of this MIME type, or URLs of this scheme; nothing
    /// when there is none, or no way to tell.
    std::optional<std::string> handlerOfType(const std::string& contentType);
    std::optional<std::string> handlerOfScheme(const std::string& scheme);

private:
    ModuleObject<DesktopLibrary> _library;
};

}  // namespace hosts
