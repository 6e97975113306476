// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/result.h"
#include "platform/foundation/value.h"

namespace hosts::terminal {

/// What the pane's two files hold, wherever that is written down: on a phone, or in a file that tells of one.
struct StoredSettings {
    /// Nothing for a file that the phone does not have.
    std::optional<platform::Dictionary> settings = {};
    std::optional<platform::Dictionary> exceptions = {};
    /// Whether it could tell of exceptions at all. Neither a settings file nor a support report can.
    bool tellsExceptions = true;
};

/// What a file tells: an export, a settings file or a support report, as property lists in either encoding, or what
/// `list --json` has printed, of which the stored settings count. A problem for what is none of these, or is an export
/// of a newer version.
platform::Result<StoredSettings> readStoredSettings(std::string_view bytes);

/// An export: an XML property list with "Settings" and "Exceptions" as far as there are such files, and the format's
/// version. The same settings give the same bytes. A problem when they hold what XML cannot say.
platform::Result<std::string> exportOf(const StoredSettings& stored);

}  // namespace hosts::terminal
