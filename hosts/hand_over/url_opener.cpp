// SPDX-License-Identifier: MIT
#include "hosts/hand_over/url_opener.h"

#include <algorithm>
#include <array>

#include "platform/foundation/ascii.h"

namespace hosts {

namespace {

constexpr std::array<std::string_view, 5> openedSchemes{"https", "tweetbot", "twitter", "cydia", "mailto"};

// Schemes count the same in capital letters.
std::string schemeOf(std::string_view url) {
    std::string scheme{url.substr(0, std::min(url.find(':'), url.size()))};
    std::ranges::transform(scheme, scheme.begin(), platform::lowerCase);
    return url.find(':') == std::string_view::npos ? std::string{} : scheme;
}

bool isOpened(std::string_view scheme) {
    return std::ranges::find(openedSchemes, scheme) != openedSchemes.end();
}

bool hasBlankOrControl(std::string_view url) {
    return std::ranges::any_of(url, [](char letter) { return static_cast<unsigned char>(letter) <= ' '; });
}

}  // namespace

bool UrlOpener::canOpenURL(std::string_view url) {
    const std::string scheme = schemeOf(url);
    return isOpened(scheme) && _desktop.handlerOfScheme(scheme).has_value();
}

platform::Result<platform::Done> UrlOpener::open(std::string_view url) {
    using platform::Problem;
    const std::string scheme = schemeOf(url);
    if (!isOpened(scheme)) return Problem{{}, "addresses of this kind are not opened", scheme + ":"};
    if (hasBlankOrControl(url)) return Problem{.reason = "an address has neither blanks nor control characters in it"};
    return _programs.run({"xdg-open", std::string{url}});
}

}  // namespace hosts
