// SPDX-License-Identifier: MIT
#include "tests/kit/child_process.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <system_error>
#include <thread>
#include <utility>

#include "tests/kit/forked.h"

namespace kit {

namespace {

using hosts::Descriptor;

struct Pipe {
    Descriptor readEnd;
    Descriptor writeEnd;
};

Pipe makePipe() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw std::system_error{errno, std::generic_category(), "pipe2"};
    return {Descriptor{ends[0]}, Descriptor{ends[1]}};
}

double secondsOf(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

void ignoreBrokenPipes() {
    static const auto before = ::signal(SIGPIPE, SIG_IGN);
    static_cast<void>(before);
}

}  // namespace

Environment ownEnvironment() {
    Environment all;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        const std::string_view text = *variable;
        const std::size_t equals = text.find('=');
        if (equals != text.npos) all.emplace(text.substr(0, equals), text.substr(equals + 1));
    }
    return all;
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

ChildProcess::ChildProcess(const std::vector<std::string>& command) {
    Pipe output = makePipe();
    start(command, ownEnvironment(), output.writeEnd.get(), STDERR_FILENO);
    _output.pipe = std::move(output.readEnd);
}

ChildProcess::ChildProcess(const std::vector<std::string>& command, const Environment& environment) {
    Pipe output = makePipe();
    Pipe errors = makePipe();
    start(command, environment, output.writeEnd.get(), errors.writeEnd.get());
    _output.pipe = std::move(output.readEnd);
    _errors.pipe = std::move(errors.readEnd);
}

ChildProcess::ChildProcess(const std::vector<std::string>& command, const Environment& environment, int output,
                           Descriptor reader) {
    Pipe errors = makePipe();
    start(command, environment, output, errors.writeEnd.get());
    _output.pipe = std::move(reader);
    _errors.pipe = std::move(errors.readEnd);
}

void ChildProcess::start(const std::vector<std::string>& command, const Environment& environment, int output,
                         int errors) {
    Pipe input = makePipe();
    const std::vector<std::string> variables = assignmentsOf(environment);
    ignoreBrokenPipes();
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input.readEnd.get(), STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, errors, STDERR_FILENO);
    // What this process ignores, the program must not.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t usual;
    sigemptyset(&usual);
    sigaddset(&usual, SIGPIPE);
    posix_spawnattr_setsigdefault(&attributes, &usual);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
    const int error = ::posix_spawn(&_process, command.front().c_str(), &actions, &attributes,
                                    pointersTo(command).data(), pointersTo(variables).data());
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) throw std::system_error{error, std::generic_category(), command.front()};
    _input = std::move(input.writeEnd);
    ::fcntl(_input.get(), F_SETFL, O_NONBLOCK);
}

ChildProcess::~ChildProcess() {
    signal(SIGKILL);
    if (!_ended) ::waitpid(_process, nullptr, 0);
}

void ChildProcess::signal(int number) {
    if (!_ended) ::kill(_process, number);
}

void ChildProcess::takeIn(Stream& stream) {
    std::array<char, 65536> bytes;
    const ssize_t count = ::read(stream.pipe.get(), bytes.data(), bytes.size());
    if (count > 0) {
        stream.pending.append(bytes.data(), static_cast<std::size_t>(count));
    } else if (count == 0 || errno != EINTR) {
        stream.pipe = {};
    }
}

std::optional<bool> ChildProcess::exchange(bool wantsToWrite, Clock::time_point deadline) {
    // poll passes over descriptors that are -1.
    auto descriptor = [](const Descriptor& file) { return file.isOpen() ? file.get() : -1; };
    std::array<pollfd, 3> watched{{{descriptor(_output.pipe), POLLIN, 0},
                                   {descriptor(_errors.pipe), POLLIN, 0},
                                   {wantsToWrite ? descriptor(_input) : -1, POLLOUT, 0}}};
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
    const int ready = left <= 0 ? 0 : ::poll(watched.data(), watched.size(), static_cast<int>(left));
    if (ready == 0) return std::nullopt;
    if (watched[0].revents != 0) takeIn(_output);
    if (watched[1].revents != 0) takeIn(_errors);
    return watched[2].revents != 0;
}

bool ChildProcess::exchangeInTime(bool wantsToWrite, Clock::time_point deadline) {
    const auto hasRoom = exchange(wantsToWrite, deadline);
    if (!hasRoom) throw std::runtime_error{"the program takes too long; it has said: " + _output.pending};
    return *hasRoom;
}

void ChildProcess::send(std::string_view text) {
    const auto deadline = Clock::now() + patience;
    while (!text.empty()) {
        if (!exchangeInTime(true, deadline)) continue;
        const ssize_t count = ::write(_input.get(), text.data(), text.size());
        if (count > 0) {
            text.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno == EPIPE) {
            return;
        } else if (errno != EAGAIN && errno != EINTR) {
            throw std::system_error{errno, std::generic_category(), "writing to the program"};
        }
    }
}

std::optional<std::string> ChildProcess::lineOf(Stream& stream) {
    const std::size_t end = stream.pending.find('\n');
    if (end == std::string::npos) return std::nullopt;
    std::string line = stream.pending.substr(0, end);
    stream.pending.erase(0, end + 1);
    return line;
}

std::optional<std::string> ChildProcess::readLineOf(Stream& stream) {
    const auto deadline = Clock::now() + patience;
    for (;;) {
        auto line = lineOf(stream);
        if (line || !stream.pipe.isOpen()) return line;
        exchangeInTime(false, deadline);
    }
}

std::optional<std::string> ChildProcess::readLine(std::chrono::milliseconds limit) {
    const auto deadline = Clock::now() + limit;
    for (;;) {
        auto line = lineOf(_output);
        if (line || !_output.pipe.isOpen() || !exchange(false, deadline)) return line;
    }
}

std::optional<std::string> ChildProcess::readLine() {
    return readLineOf(_output);
}

std::optional<std::string> ChildProcess::readErrorLine() {
    return readLineOf(_errors);
}

std::size_t ChildProcess::statusNumber(std::string_view name) const {
    std::ifstream status("/proc/" + std::to_string(_process) + "/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(name)) return std::stoul(line.substr(name.size()));
    }
    throw std::runtime_error{"the program has ended"};
}

std::size_t ChildProcess::openFiles() const {
    const std::filesystem::directory_iterator files{"/proc/" + std::to_string(_process) + "/fd"};
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

bool ChildProcess::hasEnded() {
    if (_ended) return true;
    int status = 0;
    rusage usage{};
    if (::wait4(_process, &status, WNOHANG, &usage) == 0) return false;
    _ended = true;
    _outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    _outcome.peakMemory = static_cast<std::size_t>(usage.ru_maxrss) * 1024;
    _outcome.processorTime = secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime);
    return true;
}

int ChildProcess::wait() {
    endInput();
    const auto deadline = Clock::now() + patience;
    while (_output.pipe.isOpen() || _errors.pipe.isOpen())
        exchangeInTime(false, deadline);
    while (!hasEnded()) {
        if (Clock::now() > deadline) throw std::runtime_error{"the program does not end"};
        std::this_thread::sleep_for(std::chrono::milliseconds{1});
    }
    return _outcome.status;
}

Outcome ChildProcess::finish() {
    wait();
    Outcome outcome = _outcome;
    outcome.output = std::exchange(_output.pending, {});
    outcome.errors = std::exchange(_errors.pending, {});
    return outcome;
}

}  // namespace kit
