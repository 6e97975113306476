// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/class_registry.h"
#include "platform/foundation/export.h"
#include "platform/foundation/result.h"
#include "platform/foundation/value.h"

namespace platform {

class SystemImage;

/// A folder of the system image that holds an Info.plist, resources and perhaps a loadable module.
class TRIVEL3_PLATFORM_EXPORT NSBundle {
public:
    /// Where the phone has the bundle ("/Library/PreferenceBundles/NAME.bundle").
    const std::string& path() const { return _path; }

    /// The bundle's Info.plist; empty when it is missing or malformed.
    Dictionary infoDictionary() const;

    /// An entry of the Info.plist that is a string, else an empty string.
    std::string infoString(std::string_view key) const;

    /// Loads the module that the Info.plist names as `CFBundleExecutable` and adds its classes to
    /// the process's. A loaded module stays for the life of the process; loading it again changes
    /// nothing. The pane treats a bundle that cannot be loaded as absent; why is for the programs.
    Result<Done> load() const;

    /// The machine's path of the file NAME.TYPE right in the bundle; nothing when there is none.
    std::optional<std::string> pathForResource_ofType(std::string_view name, std::string_view type) const;

private:
    friend class SystemImage;
    NSBundle(ClassRegistry& classes, std::string path, std::string folder)
        : _classes(&classes), _path(std::move(path)), _folder(std::move(folder)) {}

    ClassRegistry* _classes;
    std::string _path;
    std::string _folder;
};

/// The phone's system as it is installed beside the programs: the folder in which bundles are looked
/// up by the phone's own paths. It is never the phone's folder, whose content must not run here.
class TRIVEL3_PLATFORM_EXPORT SystemImage {
public:
    SystemImage(std::string folder, ClassRegistry& classes) : _folder(std::move(folder)), _classes(classes) {}

    /// The bundle at the phone's path (`bundleWithPath:`); nothing when there is no such folder.
    std::optional<NSBundle> bundleWithPath(std::string_view path);

    const std::string& folder() const { return _folder; }

private:
    std::string _folder;
    ClassRegistry& _classes;
};

}  // namespace platform
