// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/app_list/rationed_files.h"
#include "platform/foundation/result.h"
#include "platform/foundation/value.h"
#include "platform/services/file_listener.h"
#include "platform/services/file_system.h"

namespace hosts {

/// The files that an application's identifier and name were read from, as they then were. A file without a stamp could
/// not be read.
struct ApplicationSources {
    std::optional<platform::Stamp> info;
    std::optional<platform::Stamp> englishNames;
};

/// What is known of one application.
struct InstalledApplication {
    std::string identifier;   ///< not empty, and without control characters
    std::string displayName;  ///< one line of at most `longestName` bytes
    std::string folder;       ///< the phone's path of its ".app" folder
    bool isSystem = false;
    ApplicationSources sources;
};

/// In bytes: longer than any name that fits a screen, and short enough to be laid out many times.
inline constexpr std::size_t longestName = 512;

/// Each identifier once, in the order of the identifiers' bytes.
using InstalledApplications = std::vector<InstalledApplication>;

/// The application of that identifier; null when there is none.
const InstalledApplication* findApplication(const InstalledApplications& applications, std::string_view identifier);

/// Finds the applications of the phone: the system's own in "/Applications", and the user's in the
/// folders in which one system version or another keeps them, each in a folder of its own. Of two
/// with one identifier, the first that is found counts: the system's before the user's, then in the
/// order of their paths.
///
/// An application of `known`, what was found before, is taken over as it is when the files that it was read from are
/// known to be the same; any other is read anew. `skips`, which may be null, is told of what is there and is not among
/// them.
InstalledApplications findInstalledApplications(const platform::FileSystem& files, InstalledApplications known = {},
                                                platform::FileListener* skips = nullptr);

/// Reads the Info.plist of the application in `folder`, whose name ends in ".app", and its English
/// names. A problem when there is no usable identifier; anything else that is missing or malformed is
/// as if it were not there.
platform::Result<InstalledApplication> readApplication(RationedFiles& files, const std::string& folder);

/// The path of the Info.plist of the application in `folder`.
std::string infoFile(const std::string& folder);

/// These keys of the Info.plist of the application in `folder`; nothing when it cannot be read. `stamp`, unless it is
/// null, is set to the file's.
std::optional<platform::Dictionary> readInfo(RationedFiles& files, const std::string& folder,
                                             std::span<const std::string_view> keys,
                                             std::optional<platform::Stamp>* stamp = nullptr);

}  // namespace hosts
