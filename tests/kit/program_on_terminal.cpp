// SPDX-License-Identifier: MIT
#include "tests/kit/program_on_terminal.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <system_error>
#include <thread>

#include "tests/kit/forked.h"
#include "tests/kit/temporary_folder.h"

namespace kit {
namespace {

// Of "number (name) state parent group session …". A program that has ended and that nobody has waited for is gone.
bool isInSession(const std::string& status, pid_t session) {
    const std::size_t name = status.rfind(')');
    if (name == status.npos) return false;
    std::istringstream fields(status.substr(name + 1));
    char state = 0;
    pid_t parent = 0;
    pid_t group = 0;
    pid_t own = 0;
    fields >> state >> parent >> group >> own;
    return own == session && state != 'Z' && state != 'X';
}

}  // namespace

ProgramOnTerminal::ProgramOnTerminal(const std::vector<std::string>& command, const Environment& environment) {
    const std::vector<std::string> variables = assignmentsOf(environment);
    const std::vector<char*> arguments = pointersTo(command);
    const std::vector<char*> own = pointersTo(variables);
    const winsize size{40, 100, 0, 0};
    int terminal = -1;
    _process = ::forkpty(&terminal, nullptr, nullptr, &size);
    if (_process < 0) throw std::system_error{errno, std::generic_category(), "forkpty"};
    if (_process == 0) {
        ::signal(SIGPIPE, SIG_DFL);
        ::execve(arguments[0], arguments.data(), own.data());
        ::_exit(127);
    }
    _terminal = hosts::Descriptor{terminal};
    ::fcntl(terminal, F_SETFD, FD_CLOEXEC);
}

ProgramOnTerminal::~ProgramOnTerminal() {
    if (_hasEnded) return;
    ::kill(_process, SIGKILL);
    ::waitpid(_process, nullptr, 0);
}

void ProgramOnTerminal::type(std::string_view keys) {
    if (::write(_terminal.get(), keys.data(), keys.size()) != static_cast<ssize_t>(keys.size()))
        throw std::system_error{errno, std::generic_category(), "typing"};
}

bool ProgramOnTerminal::takeIn() {
    pollfd wait{_terminal.get(), POLLIN, 0};
    const auto patience = std::chrono::milliseconds{ChildProcess::patience};
    if (::poll(&wait, 1, static_cast<int>(patience.count())) == 0)
        throw std::runtime_error{"the program takes too long; it has shown: " + _shown};
    std::array<char, 4096> bytes;
    const ssize_t count = ::read(_terminal.get(), bytes.data(), bytes.size());
    // A terminal that nobody has open any more is an input/output error.
    if (count <= 0) return count < 0 && errno == EINTR;
    _shown.append(bytes.data(), static_cast<std::size_t>(count));
    return true;
}

void ProgramOnTerminal::waitFor(std::string_view text) {
    std::size_t at = std::string::npos;
    while ((at = _shown.find(text, _seen)) == std::string::npos)
        if (!takeIn()) throw std::runtime_error{"the program has ended; it has shown: " + _shown};
    _seen = at + text.size();
}

int ProgramOnTerminal::finish() {
    while (takeIn()) {
    }
    _hasEnded = true;
    return waitForChild(_process);
}

bool ProgramOnTerminal::echoes() const {
    termios settings{};
    return ::tcgetattr(_terminal.get(), &settings) == 0 && (settings.c_lflag & ECHO) != 0;
}

std::vector<std::string> ProgramOnTerminal::programs() const {
    std::vector<std::string> lines;
    for (const auto& entry : std::filesystem::directory_iterator{"/proc"}) {
        const std::string number = entry.path().filename();
        if (!std::ranges::all_of(number, [](unsigned char digit) { return std::isdigit(digit) != 0; })) continue;
        if (!isInSession(readText(entry.path() / "stat"), _process)) continue;
        std::string line = readText(entry.path() / "cmdline");
        std::ranges::replace(line, '\0', ' ');
        lines.push_back(line);
    }
    return lines;
}

void ProgramOnTerminal::waitUntilAllAreGone() const {
    const auto deadline = std::chrono::steady_clock::now() + ChildProcess::patience;
    while (!programs().empty()) {
        if (std::chrono::steady_clock::now() > deadline) throw std::runtime_error{"still there: " + programs().front()};
        std::this_thread::sleep_for(std::chrono::milliseconds{2});
    }
}

}  // namespace kit
