// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/event_loop.h"

#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace hosts::terminal::screen {
namespace {

constexpr int forEver = -1;

constexpr short lost = POLLHUP | POLLERR | POLLNVAL;

}  // namespace

std::optional<int> EventLoop::run() {
    while (!_isOver && !_parts.screen.isOver()) {
        if (!_isPainted) paint();
        wait();
    }
    return _endedBy;
}

void EventLoop::paint() {
    _picture = _parts.screen.compose(_parts.terminal.size());
    _parts.terminal.paint(_picture);
    _isPainted = true;
}

void EventLoop::wait() {
    std::array<pollfd, 3> watched{
        {{STDIN_FILENO, POLLIN, 0}, {_parts.signals.descriptor(), POLLIN, 0}, {_parts.events.descriptor(), POLLIN, 0}}};
    const int ready = ::poll(watched.data(), watched.size(), forEver);
    if (ready < 0) {
        _isOver = errno != EINTR;
        return;
    }
    if (watched[1].revents != 0) takeSignals();
    if (watched[0].revents & POLLIN) takeInput();
    if (watched[0].revents & lost) _isOver = true;
    if (watched[2].revents != 0) takePhoneEvents();
}

// What a key does depends on what the keys before it have brought onto the screen; only the last
// picture needs to be painted.
void EventLoop::takeInput() {
    while (const auto event = _parts.terminal.nextEvent()) {
        _isPainted = false;
        _parts.screen.handle(*event);
        if (_parts.screen.isOver()) return;
        _picture = _parts.screen.compose(_parts.terminal.size());
    }
}

void EventLoop::takeSignals() {
    while (const auto number = _parts.signals.next())
        takeSignal(*number);
}

void EventLoop::takeSignal(int number) {
    _isPainted = false;
    switch (number) {
        case SIGTSTP:
            _parts.terminal.suspend();
            ScreenSignals::stopProcess();
            return _parts.terminal.resume();
        case SIGCONT:
            return _parts.terminal.resume();
        case SIGWINCH:
            return _parts.terminal.adoptSize();
        case SIGINT:
            return _parts.screen.quit();
        default:
            _isOver = true;
            _endedBy = number;
    }
}

// A notification says that it is time to look at the files, and no more: our own come back too.
void EventLoop::takePhoneEvents() {
    while (const auto event = _parts.events.next()) {
        if (event->kind == PhoneEvent::Kind::gone) {
            _parts.screen.notePhoneGone(event->name);
            _isPainted = false;
            return;
        }
        const bool isFile = event->kind == PhoneEvent::Kind::fileChanged;
        const auto& all = _parts.screen.observedFiles();
        const bool isPictureDue = _parts.screen.noteFilesChanged(isFile ? std::span(&event->name, 1) : std::span(all));
        if (isPictureDue) _isPainted = false;
    }
}

}  // namespace hosts::terminal::screen
