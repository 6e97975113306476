// SPDX-License-Identifier: MIT
#include "hosts/notifications/session_notify_center.h"

#include "hosts/system/module_function.h"

namespace hosts {

namespace {

// After a post that failed, none is tried for this many times as long as the failure took. A bus
// that refuses is asked again at once, or nearly; one that hangs costs a twentieth of the time.
constexpr int restsPerFailure = 20;

}  // namespace

bool SessionNotifyCenter::loadModule() {
    if (_bus) return true;
    if (_loadingFailed) return false;
    auto* const make =
        loadFunction<MakeSessionBus>(_module, makeSessionBusSymbol, "the session bus module", _lastError);
    _loadingFailed = make == nullptr;
    if (make != nullptr) make(_bus);
    return make != nullptr;
}

void SessionNotifyCenter::postNotification(std::string_view name) {
    const auto begin = Clock::now();
    if (begin < _restUntil || !loadModule()) return;
    if (!tryPost(std::string{name})) {
        const auto end = Clock::now();
        _restUntil = end + restsPerFailure * (end - begin);
    }
}

bool SessionNotifyCenter::tryPost(const std::string& name) {
    if (name.find('\0') != std::string::npos) {
        _lastError = "a notification's name has no NUL byte in it";
        return false;
    }
    const bool posted = _bus->post(name, _lastError);
    if (posted) _lastError.clear();
    return posted;
}

std::unique_ptr<NotificationStream> SessionNotifyCenter::observe() {
    if (!loadModule()) return nullptr;
    auto stream = _bus->observe(_lastError);
    if (stream) _lastError.clear();
    return stream;
}

}  // namespace hosts
