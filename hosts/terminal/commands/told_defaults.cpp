// SPDX-License-Identifier: MIT
#include "hosts/terminal/commands/told_defaults.h"

#include "hosts/session/exit_status.h"
#include "hosts/session/stored_content.h"

namespace hosts::terminal {

void tellDefaults(const Outcomes& outcomes, platform::Platform& platform, std::span<const std::string> paths) {
    if (outcomes.tellsPassedOver()) return;
    for (const std::string& path : paths) {
        if (!platform.dictionaries.hasRead(path) || platform.dictionaries.read(path)) continue;
        if (const auto why = whyNothing(platform.files, path)) warn(defaultsText(*why));
    }
}

}  // namespace hosts::terminal
