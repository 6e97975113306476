// SPDX-License-Identifier: MIT
#include "running_program.h"

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
#include <stdexcept>
#include <system_error>
#include <thread>
#include <utility>

namespace test {

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

std::vector<char*> pointersTo(const std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (const std::string& text : texts)
        pointers.push_back(const_cast<char*>(text.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

void ignoreBrokenPipes() {
    static const auto before = ::signal(SIGPIPE, SIG_IGN);
    static_cast<void>(before);
}

}  // namespace

RunningProgram::RunningProgram(const std::vector<std::string>& command, const std::vector<std::string>& environment) {
    Pipe output = makePipe();
    start(command, environment, output.writeEnd.get());
    _output.pipe = std::move(output.readEnd);
}

RunningProgram::RunningProgram(const std::vector<std::string>& command, const std::vector<std::string>& environment,
                               int output, Descriptor reader) {
    start(command, environment, output);
    _output.pipe = std::move(reader);
}

void RunningProgram::start(const std::vector<std::string>& command, const std::vector<std::string>& environment,
                           int output) {
    Pipe input = makePipe();
    Pipe errors = makePipe();
    ignoreBrokenPipes();
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input.readEnd.get(), STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, errors.writeEnd.get(), STDERR_FILENO);
    // What this process ignores, the program must not.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t usual;
    sigemptyset(&usual);
    sigaddset(&usual, SIGPIPE);
    posix_spawnattr_setsigdefault(&attributes, &usual);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
    const int error = ::posix_spawn(&_process, command.front().c_str(), &actions, &attributes,
                                    pointersTo(command).data(), pointersTo(environment).data());
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) throw std::system_error{error, std::generic_category(), command.front()};
    _input = std::move(input.writeEnd);
    ::fcntl(_input.get(), F_SETFL, O_NONBLOCK);
    _errors.pipe = std::move(errors.readEnd);
}

RunningProgram::~RunningProgram() {
    signal(SIGKILL);
    if (!_status) ::waitpid(_process, nullptr, 0);
}

void RunningProgram::signal(int number) {
    if (!_status) ::kill(_process, number);
}

void RunningProgram::takeIn(Stream& stream) {
    std::array<char, 65536> bytes;
    const ssize_t count = ::read(stream.pipe.get(), bytes.data(), bytes.size());
    if (count > 0) {
        stream.pending.append(bytes.data(), static_cast<std::size_t>(count));
    } else if (count == 0 || errno != EINTR) {
        stream.pipe = {};
    }
}

bool RunningProgram::exchange(bool wantsToWrite, Clock::time_point deadline) {
    // poll passes over descriptors that are -1.
    auto descriptor = [](const Descriptor& file) { return file.isOpen() ? file.get() : -1; };
    std::array<pollfd, 3> watched{{{descriptor(_output.pipe), POLLIN, 0},
                                   {descriptor(_errors.pipe), POLLIN, 0},
                                   {wantsToWrite ? descriptor(_input) : -1, POLLOUT, 0}}};
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
    const int ready = left <= 0 ? 0 : ::poll(watched.data(), watched.size(), static_cast<int>(left));
    if (ready == 0) throw std::runtime_error{"the program takes too long; it has said: " + _output.pending};
    if (watched[0].revents != 0) takeIn(_output);
    if (watched[1].revents != 0) takeIn(_errors);
    return watched[2].revents != 0;
}

void RunningProgram::send(std::string_view text) {
    const auto deadline = Clock::now() + patience;
    while (!text.empty()) {
        if (!exchange(true, deadline)) continue;
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

std::optional<std::string> RunningProgram::readLineOf(Stream& stream) {
    const auto deadline = Clock::now() + patience;
    std::size_t end = stream.pending.find('\n');
    while (end == std::string::npos) {
        if (!stream.pipe.isOpen()) return std::nullopt;
        exchange(false, deadline);
        end = stream.pending.find('\n');
    }
    std::string line = stream.pending.substr(0, end);
    stream.pending.erase(0, end + 1);
    return line;
}

std::optional<std::string> RunningProgram::readLine() {
    return readLineOf(_output);
}

std::optional<std::string> RunningProgram::readErrorLine() {
    return readLineOf(_errors);
}

std::size_t RunningProgram::statusNumber(std::string_view name) const {
    std::ifstream status("/proc/" + std::to_string(_process) + "/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(name)) return std::stoul(line.substr(name.size()));
    }
    throw std::runtime_error{"the program has ended"};
}

std::size_t RunningProgram::openFiles() const {
    const std::filesystem::directory_iterator files{"/proc/" + std::to_string(_process) + "/fd"};
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

void RunningProgram::waitForEnd() {
    const auto deadline = Clock::now() + patience;
    int status = 0;
    rusage usage{};
    while (::wait4(_process, &status, WNOHANG, &usage) == 0) {
        if (Clock::now() > deadline) throw std::runtime_error{"the program does not end"};
        std::this_thread::sleep_for(std::chrono::milliseconds{1});
    }
    _peakMemory = static_cast<std::size_t>(usage.ru_maxrss) * 1024;
    _processorTime = secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime);
    _status = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

Outcome RunningProgram::finish() {
    endInput();
    const auto deadline = Clock::now() + patience;
    while (_output.pipe.isOpen() || _errors.pipe.isOpen())
        exchange(false, deadline);
    if (!_status) waitForEnd();
    return {*_status, std::exchange(_output.pending, {}), std::exchange(_errors.pending, {}), _peakMemory,
            _processorTime};
}

}  // namespace test
