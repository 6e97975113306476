// SPDX-License-Identifier: MIT
#include "hosts/session/composed_post.h"

#include <cstdlib>

#include "platform/foundation/utf8.h"

namespace hosts {

namespace {

using Weight = ComposerOutcome::Weight;

}  // namespace

int ComposedPost::room() const {
    return longest - static_cast<int>(platform::utf16Length(_text));
}

std::string ComposedPost::roomText() const {
    const int count = std::abs(room());
    return std::to_string(count) + (count == 1 ? " character" : " characters") + (room() < 0 ? " too many" : " left");
}

std::optional<std::string> ComposedPost::obstacle() const {
    if (_text.find_first_not_of(" \t\r\n") == std::string::npos) return "There is nothing to post yet";
    if (room() < 0) return "The post is too long: " + roomText();
    return std::nullopt;
}

ComposerOutcome ComposedPost::post() {
    if (auto why = obstacle()) return {Weight::problem, *std::move(why), false};
    const auto posted = _handOver.post(serviceType(), _text);
    if (!posted) {
        const platform::Problem& problem = posted.error();
        return {Weight::problem, "Not opened: " + problem.reason + (problem.path.empty() ? "" : " " + problem.path),
                false};
    }
    _composer->finish(platform::SLComposeViewControllerResult::done);
    return {Weight::plain, "The post is open in your browser"};
}

}  // namespace hosts
