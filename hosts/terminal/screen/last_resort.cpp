// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/last_resort.h"

#include <curses.h>
#include <signal.h>
#include <term.h>
#include <termios.h>
#include <unistd.h>

#include <cstddef>
#include <cstring>
#include <string>

namespace hosts::terminal::screen {
namespace {

constexpr int deadlySignals[] = {SIGSEGV, SIGBUS,  SIGFPE,  SIGILL,  SIGABRT, SIGSYS, SIGTRAP,
                                 SIGXCPU, SIGXFSZ, SIGPIPE, SIGALRM, SIGUSR1, SIGUSR2};

// What a signal's handler may use: no allocation, no curses.
termios settingsBefore;
char sequence[256];
std::size_t sequenceLength = 0;

// The signal's usual effect follows when this returns: it is raised again, and kept till then.
void putBack(int number) {
    const auto written = ::write(STDOUT_FILENO, sequence, sequenceLength);
    static_cast<void>(written);
    ::tcsetattr(STDIN_FILENO, TCSANOW, &settingsBefore);
    ::raise(number);
}

void add(std::string& all, const char* capability) {
    const char* const text = ::tigetstr(capability);
    if (text && text != reinterpret_cast<const char*>(-1)) all += text;
}

bool hasUsualEffect(int number) {
    struct sigaction current {};
    return ::sigaction(number, nullptr, &current) == 0 && current.sa_handler == SIG_DFL;
}

}  // namespace

LastResort::LastResort() {
    ::tcgetattr(STDIN_FILENO, &settingsBefore);
}

void LastResort::arm() {
    // Colours, the keypad, the mouse, the cursor, and the screen that was there before.
    std::string all;
    add(all, "sgr0");
    add(all, "rmkx");
    if (::key_defined("\x1b[M") == KEY_MOUSE || ::key_defined("\x1b[<") == KEY_MOUSE) all += "\x1b[?1000l\x1b[?1006l";
    add(all, "cnorm");
    add(all, "rmcup");
    sequenceLength = all.size() < sizeof sequence ? all.size() : 0;
    std::memcpy(sequence, all.data(), sequenceLength);

    struct sigaction action {};
    action.sa_handler = putBack;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int number : deadlySignals) {
        if (hasUsualEffect(number)) ::sigaction(number, &action, nullptr);
    }
}

LastResort::~LastResort() {
    struct sigaction usual {};
    usual.sa_handler = SIG_DFL;
    for (const int number : deadlySignals) {
        struct sigaction current {};
        if (::sigaction(number, nullptr, &current) == 0 && current.sa_handler == putBack) {
            ::sigaction(number, &usual, nullptr);
        }
    }
}

}  // namespace hosts::terminal::screen
