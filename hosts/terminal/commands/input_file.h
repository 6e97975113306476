// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "hosts/terminal/travel/stored_settings.h"
#include "platform/foundation/result.h"

namespace hosts::terminal {

/// The bytes of a file of this machine, or of standard input for "-": at most 64 MB, as much as the pane reads of a
/// settings file. A problem for more, and for what is no file.
platform::Result<std::string> readInputFile(const std::string& path);

/// What such a file tells of stored settings. A problem names the file.
platform::Result<StoredSettings> readSettingsInput(const std::string& path);

}  // namespace hosts::terminal
