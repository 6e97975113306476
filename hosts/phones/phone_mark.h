// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "platform/services/device_query.h"

namespace hosts {

/// What tells a phone, whose folder is open as `root`, from another that was or will be in the same place: the id of
/// its file system or, where that has none, as every mount that is a program, the mount's type and source; and the
/// phone's own identifier, where `device` knows it.
std::string phoneMark(int root, platform::DeviceQuery& device);

}  // namespace hosts
