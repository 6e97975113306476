// SPDX-License-Identifier: MIT
#include "hosts/system/piped_process.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

#include "hosts/system/error_text.h"

namespace hosts {
namespace {

using platform::Problem;
using platform::Result;

constexpr std::size_t mostComplaints = std::size_t{8} << 10;

/// What the child's standard streams are.
struct PipedStreams {
    Descriptor own;    ///< this side of its input and output
    Descriptor child;  ///< the other side
    Descriptor errors;
    Descriptor childErrors;
};

std::optional<PipedStreams> makePipedStreams() {
    int ends[2];
    // One socket for both ways: a write to a program that has ended is then an error, and no signal.
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) return std::nullopt;
    PipedStreams streams{Descriptor{ends[0]}, Descriptor{ends[1]}, {}, {}};
    if (::pipe2(ends, O_CLOEXEC) != 0) return std::nullopt;
    streams.errors = Descriptor{ends[0]};
    streams.childErrors = Descriptor{ends[1]};
    for (const Descriptor* ours : {&streams.own, &streams.errors})
        ::fcntl(ours->get(), F_SETFL, O_NONBLOCK);
    return streams;
}

// An errno value; 0 when all went well.
int spawnPiped(const PipedStreams& streams, const std::vector<std::string>& arguments, pid_t& process) {
    std::vector<char*> list;
    for (const std::string& argument : arguments)
        list.push_back(const_cast<char*>(argument.c_str()));
    list.push_back(nullptr);
    posix_spawn_file_actions_t files;
    posix_spawnattr_t attributes;
    posix_spawn_file_actions_init(&files);
    posix_spawnattr_init(&attributes);
    posix_spawn_file_actions_adddup2(&files, streams.child.get(), STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&files, streams.child.get(), STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&files, streams.childErrors.get(), STDERR_FILENO);
    sigset_t signals;
    sigemptyset(&signals);
    posix_spawnattr_setsigmask(&attributes, &signals);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK);
    const int error = ::posix_spawn(&process, "/bin/sh", &files, &attributes, list.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
    return error;
}

}  // namespace

Result<PipedProcess> PipedProcess::start(const std::string& command, const std::vector<std::string>& words,
                                         std::shared_ptr<Waiting> waiting) {
    auto streams = makePipedStreams();
    if (!streams) return Problem{{}, "cannot start a program", errorText(errno)};
    std::vector<std::string> arguments{"sh", "-c", "exec " + command + " \"$@\"", "sh"};
    arguments.insert(arguments.end(), words.begin(), words.end());
    pid_t process = -1;
    const int error = spawnPiped(*streams, arguments, process);
    if (error != 0) return Problem{{}, "cannot start a program", errorText(error)};
    PipedProcess started(process, std::move(streams->own), std::move(streams->errors));
    started._waiting = std::move(waiting);
    return started;
}

PipedProcess::PipedProcess(PipedProcess&& other) noexcept
    : _process(std::exchange(other._process, -1)),
      _stream(std::move(other._stream)),
      _errors(std::move(other._errors)),
      _complaints(std::move(other._complaints)),
      _waiting(std::move(other._waiting)) {}

PipedProcess::~PipedProcess() {
    if (_process < 0) return;
    _stream = {};
    ::kill(_process, SIGTERM);
    uninterrupted([this] { return ::waitpid(_process, nullptr, 0); });
}

PipedProcess::Came PipedProcess::exchange(std::string& out, std::string& in, const Deadline& deadline) {
    for (;;) {
        const bool mayWait = deadline.left() != 0;
        if (mayWait && _waiting && !_waiting->goesOn()) return Came::stopped;
        const short wanted = static_cast<short>(out.empty() ? POLLIN : POLLIN | POLLOUT);
        std::array<pollfd, 2> waits{{{_stream.get(), wanted, 0}, {_errors.get(), POLLIN, 0}}};
        const int ready = uninterrupted([&] { return ::poll(waits.data(), waits.size(), patienceFor(deadline)); });
        if (ready < 0 || (ready == 0 && !mayWait)) return Came::nothing;
        if (waits[1].revents != 0) takeComplaints();
        if ((waits[0].revents & POLLOUT) != 0 && write(out)) return Came::something;
        if ((waits[0].revents & ~POLLOUT) != 0) return read(in);
    }
}

int PipedProcess::patienceFor(const Deadline& deadline) const {
    constexpr int slice = static_cast<int>(Waiting::slice.count());
    const int left = deadline.left();
    if (!_waiting) return left;
    return left < 0 ? slice : std::min(left, slice);
}

bool PipedProcess::write(std::string& out) {
    const ssize_t count =
        uninterrupted([&] { return ::send(_stream.get(), out.data(), out.size(), MSG_NOSIGNAL | MSG_DONTWAIT); });
    if (count <= 0) return false;
    out.erase(0, static_cast<std::size_t>(count));
    return true;
}

PipedProcess::Came PipedProcess::read(std::string& in) {
    std::array<char, std::size_t{64} << 10> bytes;
    const ssize_t count = uninterrupted([&] { return ::read(_stream.get(), bytes.data(), bytes.size()); });
    if (count > 0) {
        in.append(bytes.data(), static_cast<std::size_t>(count));
        return Came::something;
    }
    return count < 0 && errno == EAGAIN ? Came::something : Came::end;
}

void PipedProcess::takeComplaints() {
    std::array<char, 4096> bytes;
    for (;;) {
        const ssize_t count = uninterrupted([&] { return ::read(_errors.get(), bytes.data(), bytes.size()); });
        if (count <= 0) {
            if (count == 0 || errno != EAGAIN) _errors = {};
            return;
        }
        _complaints.append(bytes.data(), static_cast<std::size_t>(count));
        if (_complaints.size() > mostComplaints) _complaints.erase(0, _complaints.size() - mostComplaints);
    }
}

std::string PipedProcess::complaints() {
    // What has closed its output may still have something to say.
    const Deadline deadline{std::chrono::seconds{1}};
    while (_errors.isOpen()) {
        pollfd wait{_errors.get(), POLLIN, 0};
        if (uninterrupted([&] { return ::poll(&wait, 1, deadline.left()); }) <= 0) break;
        takeComplaints();
    }
    return _complaints;
}

}  // namespace hosts
