// SPDX-License-Identifier: MIT
#include "tests/kit/distance.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <deque>
#include <limits>
#include <list>
#include <string>
#include <system_error>
#include <vector>

#include "tests/kit/document_tables.h"

namespace kit {
namespace {

using Clock = std::chrono::steady_clock;
using hosts::Descriptor;

sockaddr_in loopback(std::uint16_t port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

Descriptor makeSocket() {
    Descriptor made{::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)};
    if (!made.isOpen()) throw std::system_error{errno, std::generic_category(), "socket"};
    return made;
}

void sendAtOnce(const Descriptor& end) {
    const int on = 1;
    ::setsockopt(end.get(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

}  // namespace

std::uint64_t Distance::Meter::allowed() const {
    return left == 0 ? std::numeric_limits<std::uint64_t>::max() : left.load();
}

bool Distance::Meter::count(Direction direction, std::uint64_t more) {
    if (direction == Direction::there && last == Direction::back) ++questions;
    last = direction;
    bytes += more;
    if (left == 0 || (left -= more) != 0) return true;
    cutQuestion = questions.load();
    isCutOfAnswer = direction == Direction::back;
    ++cuts;
    return false;
}

/// Bytes on their way from one end to the other.
class Distance::Way {
public:
    explicit Way(Direction direction) : _direction(direction) {}

    /// False once there is nothing more to come.
    bool takeFrom(const Descriptor& end, std::chrono::microseconds delay) {
        std::array<char, 65536> bytes;
        const ssize_t count = ::recv(end.get(), bytes.data(), bytes.size(), MSG_DONTWAIT);
        if (count <= 0) return count < 0 && (errno == EAGAIN || errno == EINTR);
        _under.push_back({Clock::now() + delay, std::string(bytes.data(), static_cast<std::size_t>(count))});
        return true;
    }

    /// False when nobody takes them, or no more may go.
    bool deliverTo(const Descriptor& end, Meter& meter) {
        while (!_under.empty() && _under.front().due <= Clock::now()) {
            std::string& bytes = _under.front().bytes;
            const std::size_t size = std::min<std::uint64_t>(bytes.size(), meter.allowed());
            const ssize_t count = ::send(end.get(), bytes.data(), size, MSG_DONTWAIT | MSG_NOSIGNAL);
            if (count < 0) return errno == EAGAIN || errno == EINTR;
            bytes.erase(0, static_cast<std::size_t>(count));
            if (!meter.count(_direction, static_cast<std::uint64_t>(count))) return false;
            if (!bytes.empty()) return true;
            _under.pop_front();
        }
        return true;
    }

    bool isEmpty() const { return _under.empty(); }

private:
    struct Part {
        Clock::time_point due;
        std::string bytes;
    };
    Direction _direction;
    std::deque<Part> _under;
};

std::chrono::microseconds delayOfCounts() {
    return changesAsked() ? std::chrono::milliseconds{25} : std::chrono::microseconds{200};
}

Descriptor listenOnLoopback(std::uint16_t& port) {
    Descriptor listening = makeSocket();
    sockaddr_in address = loopback(0);
    socklen_t size = sizeof address;
    auto* const any = reinterpret_cast<sockaddr*>(&address);
    if (::bind(listening.get(), any, size) != 0 || ::listen(listening.get(), 64) != 0 ||
        ::getsockname(listening.get(), any, &size) != 0) {
        throw std::system_error{errno, std::generic_category(), "listen"};
    }
    port = ntohs(address.sin_port);
    return listening;
}

/// One connection.
class Distance::Line {
public:
    Line(Descriptor near, std::uint16_t port, int breaks)
        : _near(std::move(near)), _far(makeSocket()), _breaks(breaks) {
        const sockaddr_in address = loopback(port);
        _isOpen = ::connect(_far.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
        sendAtOnce(_near);
        sendAtOnce(_far);
    }

    int breaks() const { return _breaks; }
    const Descriptor& near() const { return _near; }
    const Descriptor& far() const { return _far; }

    /// False once it is broken, or both ends have nothing more to say.
    bool goOn(std::chrono::microseconds delay, Meter& meter) {
        const bool nearSays = _there.takeFrom(_near, delay);
        const bool farSays = _back.takeFrom(_far, delay);
        _isOpen = _isOpen && _there.deliverTo(_far, meter) && _back.deliverTo(_near, meter);
        const bool isOver = (!nearSays && _there.isEmpty()) || (!farSays && _back.isEmpty());
        return _isOpen && !isOver;
    }

private:
    Descriptor _near;
    Descriptor _far;
    Way _there{Direction::there};
    Way _back{Direction::back};
    int _breaks;
    bool _isOpen = false;
};

Distance::Distance(std::uint16_t port, std::chrono::microseconds delay)
    : _far(port), _delay(delay), _listening(listenOnLoopback(_port)), _thread([this] { run(); }) {}

Distance::~Distance() {
    _isOver = true;
    _thread.join();
}

void Distance::run() {
    constexpr int patience = 1;  // milliseconds: what is on its way has a time at which it arrives
    std::list<Line> lines;
    while (!_isOver) {
        std::vector<pollfd> waits{{_listening.get(), POLLIN, 0}};
        for (const Line& line : lines) {
            waits.push_back({line.near().get(), POLLIN, 0});
            waits.push_back({line.far().get(), POLLIN, 0});
        }
        ::poll(waits.data(), waits.size(), patience);
        if (waits[0].revents != 0) {
            Descriptor near{::accept4(_listening.get(), nullptr, nullptr, SOCK_CLOEXEC)};
            if (near.isOpen()) lines.emplace_back(std::move(near), _far, _breaks.load());
            ++_connections;
        }
        if (_isSilent) continue;
        lines.remove_if([this](Line& line) { return line.breaks() != _breaks || !line.goOn(_delay, _meter); });
    }
}

}  // namespace kit
