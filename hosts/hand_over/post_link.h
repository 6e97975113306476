// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "hosts/hand_over/url_opener.h"

namespace hosts {

/// The address of the social network's own composer, on the web, with the text in it. Nothing for a
/// service that is none of ours.
std::optional<std::string> postLink(std::string_view serviceType, std::string_view text);

/// What became of a post.
struct PostHandOver {
    /// Where the user can go to post it; empty for a service that is none of ours.
    std::string address;
    /// Empty when the address has been opened, else one line.
    std::string error;

    explicit operator bool() const { return error.empty(); }
};

/// Opens the social network's own composer with the text as the user left it.
PostHandOver handOverPost(std::string_view serviceType, std::string_view text, UrlOpener& opener);

}  // namespace hosts
