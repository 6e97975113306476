// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <string>

namespace hosts::desktop {

/// A short name for a folder, the same by whichever path it is reached.
QString folderKey(const std::string& folder);

}  // namespace hosts::desktop
