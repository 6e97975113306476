// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>

#include "hosts/session/outcomes.h"
#include "platform/services/platform.h"

namespace hosts::terminal {

/// Says on standard error why defaults are told in place of what the pane's files may hold, where that is so; not where
/// the user has asked to be told what is skipped, and has been told then.
void tellDefaults(const Outcomes& outcomes, platform::Platform& platform, std::span<const std::string> paths);

}  // namespace hosts::terminal
