// SPDX-License-Identifier: MIT
#include "tests/kit/test_application.h"

namespace kit {

bool TestApplication::handles(std::string_view url) const {
    return schemes.contains(url.substr(0, url.find(':')));
}

bool TestApplication::canOpenURL(std::string_view url) {
    const bool answer = handles(url);
    _log.add(event::canOpenUrl(std::string(url), answer));
    return answer;
}

bool TestApplication::openURL(std::string_view url) {
    const bool worked = handles(url);
    _log.add(event::openUrl(std::string(url), worked));
    return worked;
}

std::optional<platform::Value> TestDeviceQuery::copyAnswer(std::string_view key) {
    auto found = answers.find(key);
    if (found == answers.end()) return std::nullopt;
    return found->second;
}

}  // namespace kit
