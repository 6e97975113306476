// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "platform/foundation/result.h"

namespace hosts {

struct MailAttachment {
    std::string_view fileName;
    std::string_view mimeType;
    std::string_view data;
};

struct MailMessage {
    std::string_view subject;
    /// Addresses, with or without a name.
    std::span<const std::string> recipients;
    std::span<const MailAttachment> attachments;
};

/// Writes the message into the open file as a draft: complete by RFC 5322 and MIME, from the user of
/// this machine, dated now, with an empty text to begin with, and marked as not yet sent. With a problem
/// in `outcome`, when it cannot be said or written, the file's content is no message.
///
/// Implemented in a module, since the library that knows how mail is written takes long to load.
using WriteMailMessage = void(const MailMessage& message, int file, platform::Result<platform::Done>& outcome);
constexpr const char* writeMailMessageSymbol = "trivel3WriteMailMessage";

}  // namespace hosts
