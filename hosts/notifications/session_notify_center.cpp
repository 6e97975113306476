// SPDX-License-Identifier: MIT
#include "hosts/notifications/session_notify_center.h"

#include <algorithm>

#include "platform/foundation/utf8.h"

namespace hosts {

namespace {

// The share of the time that a bus which took nothing may cost from then on.
constexpr int shareOfTime = 20;

bool canTravel(std::string_view name) {
    return platform::isValidUtf8(name) && name.find('\0') == std::string_view::npos;
}

}  // namespace

SessionNotifyCenter::~SessionNotifyCenter() {
    if (!_waiting.empty()) static_cast<void>(post(busPatience));
}

void SessionNotifyCenter::postNotification(std::string_view name) {
    if (!canTravel(name)) return;
    if (std::ranges::find(_waiting, name) == _waiting.end()) _waiting.emplace_back(name);
    static_cast<void>(flush());
}

platform::Result<platform::Done> SessionNotifyCenter::flush() {
    using std::chrono::milliseconds;
    if (!_lastTry) return post(busPatience);
    const auto share = std::chrono::floor<milliseconds>((Clock::now() - *_lastTry) / shareOfTime);
    return post(std::min<milliseconds>(share, busPatience));
}

platform::Result<platform::Done> SessionNotifyCenter::post(const Deadline& deadline) {
    while (!_waiting.empty()) {
        auto found = _bus.get();
        if (!found) return std::move(found).error();
        if (auto posted = (*found)->post(_waiting.front(), deadline); !posted) {
            _lastTry = Clock::now();
            return posted;
        }
        _waiting.erase(_waiting.begin());
        _lastTry.reset();
    }
    return platform::Done();
}

platform::Result<std::unique_ptr<NotificationStream>> SessionNotifyCenter::observe() {
    auto found = _bus.get();
    if (!found) return std::move(found).error();
    return (*found)->observe();
}

}  // namespace hosts
