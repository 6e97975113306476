// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string_view>

#include "platform/services/mail_composer.h"

namespace trivel3 {

inline constexpr std::string_view supportAddress = "support@fenwary.example";

/// Makes the e-mail to the support desk, with a newly made report of device, packages and settings
/// as its one attachment. Null when the platform made no composer.
std::shared_ptr<platform::MFMailComposeViewController> makeSupportEmail(
    platform::Platform& platform, const std::shared_ptr<platform::MFMailComposeViewControllerDelegate>& delegate);

}  // namespace trivel3
