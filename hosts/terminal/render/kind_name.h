// SPDX-License-Identifier: MIT
#pragma once

#include "platform/foundation/value.h"
#include "platform/services/preference_access.h"

namespace hosts::terminal {

/// "boolean", "integer" or "dictionary".
const char* kindName(platform::PreferenceAccess::Kind kind);

/// Kinds count: 1 is no boolean.
bool isOfKind(const platform::Value& value, platform::PreferenceAccess::Kind kind);

}  // namespace hosts::terminal
