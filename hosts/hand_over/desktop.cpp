// SPDX-License-Identifier: MIT
#include "hosts/hand_over/desktop.h"

namespace hosts {

std::optional<std::string> Desktop::handlerOfType(const std::string& contentType) {
    const auto found = library();
    return found ? (*found)->handlerOf(contentType) : std::nullopt;
}

std::optional<std::string> Desktop::handlerOfScheme(const std::string& scheme) {
    return handlerOfType("x-scheme-handler/" + scheme);
}

}  // namespace hosts
