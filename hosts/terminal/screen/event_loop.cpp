// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/event_loop.h"

#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace hosts::terminal::screen {
namespace {

// How often the files are looked at, in milliseconds, for changes that nobody tells of.
constexpr int filePeriod = 250;

constexpr short lost = POLLHUP | POLLERR | POLLNVAL;

}  // namespace

void EventLoop::run() {
    while (!_isOver && !_parts.screen.isOver()) {
        if (!_isPainted) paint();
        wait();
    }
}

void EventLoop::paint() {
    _picture = _parts.screen.compose(_parts.terminal.size());
    _parts.terminal.paint(_picture);
    _isPainted = true;
}

void EventLoop::wait() {
    const int notifications = _parts.notifications ? _parts.notifications->descriptor() : -1;
    std::array<pollfd, 3> watched{
        {{STDIN_FILENO, POLLIN, 0}, {_parts.signals.descriptor(), POLLIN, 0}, {notifications, POLLIN, 0}}};
    const int ready = ::poll(watched.data(), watched.size(), filePeriod);
    if (ready < 0) {
        _isOver = errno != EINTR;
        return;
    }
    if (watched[1].revents != 0) takeSignals();
    if (watched[0].revents & POLLIN) takeInput();
    if (watched[0].revents & lost) _isOver = true;
    if (watched[2].revents != 0) takeNotifications();
    lookAtFiles();
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
        default:
            _isOver = true;
    }
}

// A notification says that it is time to look at the files, and no more: our own come back too.
void EventLoop::takeNotifications() {
    while (_parts.notifications->next()) {
    }
    if (_parts.notifications->ended()) _parts.notifications.reset();
}

// Rows that write as they are produced do not bring themselves up again: the look after producing
// them takes what they wrote for known.
void EventLoop::lookAtFiles() {
    if (!_parts.files.takeChange()) return;
    _parts.screen.noteFilesChanged();
    paint();
    _parts.files.takeChange();
}

}  // namespace hosts::terminal::screen
