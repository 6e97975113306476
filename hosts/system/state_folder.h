// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "platform/foundation/result.h"

namespace hosts {

/// The folder of ours among those where programs keep what they know of earlier runs: $XDG_STATE_HOME/trivel3,
/// or ~/.local/state/trivel3 when that variable is unset or, against the rules for it, not absolute. It need not be
/// there; whoever writes in it makes it (`makePrivateFolders`). A problem when there is no home folder either.
platform::Result<std::string> stateFolder();

/// The same among the folders of the user's data: $XDG_DATA_HOME/trivel3 or ~/.local/share/trivel3.
platform::Result<std::string> dataFolder();

/// Sixteen hexadecimal digits that stand for a text in the names of what is kept there, the same in each version of the
/// program. Two texts may have the same.
std::string textNumber(std::string_view text);

/// What files about the phone in this place are called: by its folder's name and, since two may have one, a number.
std::string phoneFileName(const std::string& place);

}  // namespace hosts
