// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string_view>

#include "platform/foundation/result.h"

namespace hosts {

/// Hands each part of an e-mail that has no parts itself to `take`, decoded, in the order of the message, until that
/// says that it has what it wants. Messages within the message have their parts, too. Any bytes at all are read, in
/// memory in proportion to their number; with a problem in `outcome`, not all parts were reached: there are more than
/// 1,000, they nest more than 16 deep, or one of them has more than 1 MB of header.
///
/// Implemented in the module that writes messages.
using ReadMailMessage = void(std::string_view message, const std::function<bool(std::string_view content)>& take,
                             platform::Result<platform::Done>& outcome);
constexpr const char* readMailMessageSymbol = "trivel3ReadMailMessage";

}  // namespace hosts
