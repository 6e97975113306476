// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>
#include <vector>

#include "hosts/app_list/installed_application.h"
#include "platform/services/file_system.h"
#include "platform/services/file_listener.h"

namespace hosts {

/// Each identifier once, in the order of the identifiers' bytes.
using InstalledApplications = std::vector<InstalledApplication>;

/// The application of that identifier; null when there is none.
const InstalledApplication* findApplication(const InstalledApplications& applications, std::string_view identifier);

/// Finds the applications of the phone: the system's own in "/Applications", and the user's in the
/// folders in which one system version or another keeps them, each in a folder of its own. Of two
/// with one identifier, the first that is found counts: the system's before the user's, then in the
/// order of their paths.
///
/// An application of `known`, what was found before, is taken over as it is when its folder is still
/// there: a phone gives a changed application a new one. `skips`, which may be null, is told of what
/// is there and is not among them.
InstalledApplications findInstalledApplications(const platform::FileSystem& files, InstalledApplications known = {},
                                                platform::FileListener* skips = nullptr);

}  // namespace hosts
