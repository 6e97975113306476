// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "platform/foundation/result.h"

namespace hosts {

/// The folder of the phone that stands in when the user names none: $XDG_DATA_HOME/trivel3/phone,
/// or ~/.local/share/trivel3/phone when that variable is unset or, against the rules for it, not
/// absolute. A problem when there is no home folder either.
platform::Result<std::string> defaultPhonePath();

/// Makes the folder `phone` as a copy of the folder `sample`, with the folders above it. The folder
/// appears whole or not at all, however many processes make it at once. One that exists is left as
/// it is. A problem when there is no such folder afterwards.
platform::Result<platform::Done> ensurePhone(const std::string& phone, const std::string& sample);

}  // namespace hosts
