// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/curses/last_resort.h"

#define NCURSES_NOMACROS 1
#include <curses.h>
#include <signal.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <string>

namespace hosts::terminal::screen {
namespace {

// These end no process, or cannot be taken.
constexpr int harmlessSignals[] = {SIGKILL, SIGSTOP, SIGTSTP, SIGTTIN, SIGTTOU, SIGCHLD, SIGCONT, SIGURG, SIGWINCH};

bool isDeadly(int number) {
    return std::ranges::find(harmlessSignals, number) == std::end(harmlessSignals);
}

// What a signal's handler may use: no allocation, no curses.
termios settingsBefore;
char endSequence[256];
std::size_t endLength = 0;

// The stack itself may be what is used up.
std::byte ownStack[std::size_t{64} << 10];

// The signal's usual effect follows when this returns: it is raised again, and kept till then.
void putBack(int number) {
    const auto written = ::write(STDOUT_FILENO, endSequence, endLength);
    static_cast<void>(written);
    ::tcsetattr(STDIN_FILENO, TCSANOW, &settingsBefore);
    ::raise(number);
}

void addCapability(std::string& all, const char* capability) {
    const char* const text = ::tigetstr(capability);
    if (text && text != reinterpret_cast<const char*>(-1)) all += text;
}

bool isTakenBy(int number, void (*handler)(int)) {
    struct sigaction current {};
    return ::sigaction(number, nullptr, &current) == 0 && current.sa_handler == handler;
}

void useOwnStack() {
    stack_t current{};
    if (::sigaltstack(nullptr, &current) != 0 || (current.ss_flags & SS_DISABLE) == 0) return;
    stack_t own{};
    own.ss_sp = ownStack;
    own.ss_size = sizeof ownStack;
    ::sigaltstack(&own, nullptr);
}

}  // namespace

LastResort::LastResort() {
    ::tcgetattr(STDIN_FILENO, &settingsBefore);
}

void LastResort::arm() {
    // Colours, the keypad, the mouse, the cursor, and the screen that was there before.
    std::string all;
    addCapability(all, "sgr0");
    addCapability(all, "rmkx");
    if (::key_defined("\x1b[M") == KEY_MOUSE || ::key_defined("\x1b[<") == KEY_MOUSE) all += "\x1b[?1000l\x1b[?1006l";
    addCapability(all, "cnorm");
    addCapability(all, "rmcup");
    endLength = all.size() < sizeof endSequence ? all.size() : 0;
    std::memcpy(endSequence, all.data(), endLength);

    useOwnStack();
    struct sigaction action {};
    action.sa_handler = putBack;
    action.sa_flags = static_cast<int>(SA_RESETHAND) | SA_ONSTACK;
    for (int number = 1; number <= SIGRTMAX; ++number) {
        if (isDeadly(number) && isTakenBy(number, SIG_DFL)) ::sigaction(number, &action, nullptr);
    }
}

LastResort::~LastResort() {
    struct sigaction usual {};
    usual.sa_handler = SIG_DFL;
    for (int number = 1; number <= SIGRTMAX; ++number) {
        if (isTakenBy(number, putBack)) ::sigaction(number, &usual, nullptr);
    }
}

}  // namespace hosts::terminal::screen
