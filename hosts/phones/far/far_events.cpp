// SPDX-License-Identifier: MIT
#include "hosts/phones/far/far_events.h"

#include <sys/epoll.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <utility>

namespace hosts {
namespace {

constexpr long secondsBetweenLooks = 2;
// A write within the same second as the one before it shows by then.
constexpr int looksAfterChange = 2;
constexpr std::size_t mostText = std::size_t{64} << 10;
// What the wrapper says, besides what notifyutil does.
constexpr std::string_view noCommand = "trivel3: no notifyutil";

// Ends when its input does, so that nothing is left behind on the phone.
std::string listeningCommand(std::span<const std::string> names) {
    std::string watch = "notifyutil";
    for (const std::string& name : names)
        watch += " -w " + shellQuoted(name);
    return "exec /bin/sh -c " + shellQuoted("command -v notifyutil >/dev/null 2>&1 || { echo '" +
                                            std::string(noCommand) + "'; cat >/dev/null; exit; }; " + watch +
                                            " 2>/dev/null </dev/null & p=$!; cat >/dev/null; kill $p 2>/dev/null");
}

}  // namespace

FarEvents::FarEvents(SshConnection& connection, FarFiles& files, PhoneNotifyCenter& notifications,
                     std::span<const std::string> paths, std::span<const std::string> names)
    : _connection(connection),
      _files(files),
      _notifications(notifications),
      _names(names.begin(), names.end()),
      _timer(::timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC)),
      _waiting(::epoll_create1(EPOLL_CLOEXEC)) {
    for (const std::string& path : paths)
        _watched.push_back({path, {}});
    if (!_watched.empty()) {
        const auto stamps = _files.lookAtAll(paths);
        for (std::size_t at = 0; stamps && at < _watched.size(); ++at)
            _watched[at].stamp = (*stamps)[at];
    }
    const itimerspec period{{secondsBetweenLooks, 0}, {secondsBetweenLooks, 0}};
    ::timerfd_settime(_timer.get(), 0, &period, nullptr);
    wait(_timer.get());
    startListening();
}

void FarEvents::wait(int descriptor) {
    epoll_event event{};
    event.events = EPOLLIN;
    event.data.fd = descriptor;
    ::epoll_ctl(_waiting.get(), EPOLL_CTL_ADD, descriptor, &event);
}

void FarEvents::startListening() {
    _generation = _connection.generation();
    if (_names.empty() || !_connection.options().notify.empty()) return useBus();
    auto process = _connection.start(listeningCommand(_names));
    if (!process) return useBus();
    _listener.emplace(*std::move(process));
    wait(_listener->descriptor());
}

void FarEvents::stopListening() {
    if (_listener) ::epoll_ctl(_waiting.get(), EPOLL_CTL_DEL, _listener->descriptor(), nullptr);
    _listener.reset();
    _text.clear();
}

void FarEvents::useBus() {
    if (_bus) return;
    if (auto observed = _notifications.bus().observe()) {
        _bus = *std::move(observed);
        wait(_bus->descriptor());
    }
}

std::optional<PhoneEvent> FarEvents::next() {
    if (auto name = nextNotification()) return PhoneEvent{PhoneEvent::Kind::notification, *std::move(name)};
    std::uint64_t expirations = 0;
    if (_timer.isOpen() && ::read(_timer.get(), &expirations, sizeof expirations) == sizeof expirations) look();
    const auto changed = std::ranges::find_if(_watched, &File::isChanged);
    if (changed != _watched.end()) {
        changed->isChanged = false;
        return PhoneEvent{PhoneEvent::Kind::fileChanged, changed->path};
    }
    if (!_untoldLoss) return std::nullopt;
    return PhoneEvent{PhoneEvent::Kind::away, *std::exchange(_untoldLoss, std::nullopt)};
}

std::optional<std::string> FarEvents::nextNotification() {
    takeLines();
    if (!_told.empty()) {
        std::string name = std::move(_told.front());
        _told.erase(_told.begin());
        return name;
    }
    if (!_bus) return std::nullopt;
    auto name = _bus->next();
    if (!name && _bus->ended()) {
        ::epoll_ctl(_waiting.get(), EPOLL_CTL_DEL, _bus->descriptor(), nullptr);
        _bus.reset();
    }
    return name;
}

void FarEvents::takeLines() {
    if (!_listener) return;
    std::string nothing;
    const PipedProcess::Came came = _listener->exchange(nothing, _text, std::chrono::milliseconds{0});
    std::vector<std::pair<std::string, bool>> told;
    for (std::size_t end = _text.find('\n'); end != _text.npos; end = _text.find('\n')) {
        const std::string line = _text.substr(0, end);
        _text.erase(0, end + 1);
        if (line == noCommand) useBus();
        for (const std::string& name : _names) {
            // "NAME", or "NAME STATE", as versions of it differ.
            const bool isName = line == name || line.starts_with(name + " ");
            if (isName) told.emplace_back(name, _notifications.takeEcho(name));
        }
    }
    // One that follows another's change right behind ours may have come as one with ours.
    const bool hasEchoes = std::ranges::any_of(told, [](const auto& each) { return each.second; });
    const bool areEchoes = hasEchoes && _files.areAsLeft();
    for (auto& [name, isEcho] : told)
        if (!isEcho || !areEchoes) _told.push_back(std::move(name));
    if (_text.size() > mostText) _text.clear();
    if (came == PipedProcess::Came::end) stopListening();
}

void FarEvents::look() {
    // Whoever has lost it has been told. Who next uses it connects again; to wait for that here would hold up the user
    // for nothing.
    if (!_connection.isConnected()) return;
    std::vector<std::string> paths;
    for (const File& file : _watched)
        paths.push_back(file.path);
    // Whether the phone is there has to be asked all the same: who listens alone would not notice that it is not.
    if (paths.empty()) paths.emplace_back("/");
    const auto stamps = _files.lookAtAll(paths);
    if (!stamps) _untoldLoss = stamps.error().text();
    if (_generation != _connection.generation()) {
        stopListening();
        startListening();
    }
    if (!stamps) return;
    for (std::size_t at = 0; at < _watched.size(); ++at) {
        File& file = _watched[at];
        const auto& now = (*stamps)[at];
        const bool isSame = now && file.stamp ? now->isSameAs(*file.stamp) : now.has_value() == file.stamp.has_value();
        if (!isSame) file.looksLeft = looksAfterChange + 1;
        file.stamp = now;
        file.isChanged = file.looksLeft > 0 && file.looksLeft-- > 0;
    }
}

}  // namespace hosts
