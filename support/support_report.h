// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "platform/services/platform.h"

namespace trivel3 {

/// The report that goes with a support e-mail, as a binary property list: six answers about the
/// device, the package manager's database and the settings file as it is. What is not to be had
/// stands as the null object, so that a report with a gap still arrives. Nothing when it cannot be
/// encoded.
std::optional<std::string> encodedSupportReport(platform::Platform& platform);

}  // namespace trivel3
