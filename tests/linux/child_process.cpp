// SPDX-License-Identifier: MIT
#include "child_process.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <unistd.h>

#include <array>
#include <system_error>

#include "forked.h"

namespace test {

namespace {

std::vector<char*> argumentsOf(const std::vector<std::string>& command) {
    std::vector<char*> arguments;
    for (const std::string& argument : command)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    return arguments;
}

}  // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& command) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw std::system_error{errno, std::generic_category(), "pipe2"};
    _output = hosts::Descriptor{ends[0]};
    const hosts::Descriptor written{ends[1]};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, written.get(), STDOUT_FILENO);
    const int error =
        ::posix_spawn(&_process, command.front().c_str(), &actions, nullptr, argumentsOf(command).data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) throw std::system_error{error, std::generic_category(), command.front()};
}

ChildProcess::~ChildProcess() {
    signal(SIGKILL);
    wait();
}

void ChildProcess::signal(int number) {
    if (!_ended) ::kill(_process, number);
}

int ChildProcess::wait() {
    if (!_ended) _ended = waitForChild(_process);
    return *_ended;
}

bool ChildProcess::readMore(std::chrono::milliseconds patience) {
    pollfd watched{_output.get(), POLLIN, 0};
    if (::poll(&watched, 1, static_cast<int>(patience.count())) <= 0) return false;
    std::array<char, 4096> bytes;
    const ssize_t count = ::read(_output.get(), bytes.data(), bytes.size());
    if (count <= 0) return false;
    _pending.append(bytes.data(), static_cast<std::size_t>(count));
    return true;
}

std::optional<std::string> ChildProcess::readLine(std::chrono::milliseconds patience) {
    std::size_t end = _pending.find('\n');
    while (end == std::string::npos) {
        if (!readMore(patience)) return std::nullopt;
        end = _pending.find('\n');
    }
    std::string line = _pending.substr(0, end);
    _pending.erase(0, end + 1);
    return line;
}

}  // namespace test
