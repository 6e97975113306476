// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/event_loop.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <utility>

namespace hosts::terminal::screen {
namespace {

constexpr int forEver = -1;

constexpr short lost = POLLHUP | POLLERR | POLLNVAL;

// Shorter waits would only flicker.
constexpr std::chrono::milliseconds untoldWait{500};

// Others tell of a new size, or of having been stopped: that is for when there is something new to paint.
bool asksToEnd(int signal) {
    return signal != SIGWINCH && signal != SIGTSTP && signal != SIGCONT;
}

template <class Kept>
std::optional<Kept> takeFirst(std::deque<Kept>& all) {
    if (all.empty()) return std::nullopt;
    Kept first = std::move(all.front());
    all.pop_front();
    return first;
}

}  // namespace

EventLoop::EventLoop(Parts parts) : _parts(std::move(parts)) {
    if (_parts.waiting) _parts.waiting->use([this](std::chrono::milliseconds waited) { return waitOn(waited); });
}

EventLoop::~EventLoop() {
    if (_parts.waiting) _parts.waiting->use(nullptr);
}

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
    const int ready = ::poll(watched.data(), watched.size(), holdsInput() ? 0 : forEver);
    if (ready < 0) {
        _isOver = errno != EINTR;
        return;
    }
    beginTurn();
    if (watched[1].revents != 0 || !_signals.empty()) takeSignals();
    if ((watched[0].revents & POLLIN) || !_typed.empty()) takeInput();
    if (watched[0].revents & lost) _isOver = true;
    if (watched[2].revents != 0) takePhoneEvents();
}

void EventLoop::beginTurn() {
    if (std::exchange(_isWaitTold, false)) _isPainted = false;
    if (_parts.waiting) _parts.waiting->beginAnew();
}

// In the midst of what a key has begun: only the last line changes, and other keys have to wait as well.
bool EventLoop::waitOn(std::chrono::milliseconds waited) {
    if (waited < untoldWait) return true;
    if (!std::exchange(_isWaitTold, true)) {
        Picture told = _picture;
        const Size size = _parts.terminal.size();
        told.lines.resize(size.height);
        told.lines.back() = _parts.screen.waitingLine(size.width);
        told.caret.reset();
        _parts.terminal.paint(told);
    }
    keepInput();
    const bool isLeft = std::ranges::any_of(_typed, [](const Event& event) { return event.key == Key::escape; });
    if (isLeft) _typed.clear();
    const bool isToQuit = std::ranges::any_of(_typed, [](const Event& event) { return event.is('q'); });
    return !isLeft && !isToQuit && std::ranges::none_of(_signals, asksToEnd);
}

void EventLoop::keepInput() {
    while (const auto number = _parts.signals.next())
        _signals.push_back(*number);
    while (const auto event = _parts.terminal.nextEvent())
        _typed.push_back(*event);
}

std::optional<Event> EventLoop::nextEvent() {
    auto kept = takeFirst(_typed);
    return kept ? kept : _parts.terminal.nextEvent();
}

std::optional<int> EventLoop::nextSignal() {
    const auto kept = takeFirst(_signals);
    return kept ? kept : _parts.signals.next();
}

// What a key does depends on what the keys before it have brought onto the screen; only the last
// picture needs to be painted.
void EventLoop::takeInput() {
    while (const auto event = nextEvent()) {
        beginTurn();
        _isPainted = false;
        _parts.screen.handle(*event);
        if (_parts.screen.isOver()) return;
        _picture = _parts.screen.compose(_parts.terminal.size());
    }
}

void EventLoop::takeSignals() {
    while (const auto number = nextSignal())
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
        if (event->isLoss()) {
            _parts.screen.noteLoss(*event);
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
