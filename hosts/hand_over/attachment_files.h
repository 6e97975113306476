// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "platform/services/mail_composer.h"

namespace hosts {

/// Puts the attachments that have data into files of their own names, in a new folder below
/// `cacheFolder`, and adds their paths to `files`. Mail programs read them in their own time, some
/// not before the user sends, so they stay for a week; older ones are removed here. False, with one
/// line in `error` and no new folder, when that does not work.
bool saveAttachments(const std::vector<platform::MFMailComposeViewController::Attachment>& attachments,
                     const std::string& cacheFolder, std::vector<std::string>& files, std::string& error);

}  // namespace hosts
