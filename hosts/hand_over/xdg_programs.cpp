// SPDX-License-Identifier: MIT
#include "hosts/hand_over/xdg_programs.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <optional>

#include "hosts/system/descriptor.h"
#include "hosts/system/error_text.h"

namespace hosts {

namespace {

using Clock = std::chrono::steady_clock;

// What a program is started with: a session of its own, so that a key that ends this program does
// not end what it has opened; usual signals; no input, no output, no files.
class SpawnSettings {
public:
    SpawnSettings() {
        posix_spawn_file_actions_init(&_files);
        posix_spawnattr_init(&_attributes);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;
    ~SpawnSettings() {
        posix_spawn_file_actions_destroy(&_files);
        posix_spawnattr_destroy(&_attributes);
    }

    // An errno value; 0 when all went well.
    int prepare() {
        for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            check(posix_spawn_file_actions_addopen(&_files, standard, "/dev/null", O_RDWR, 0));
        check(posix_spawn_file_actions_addclosefrom_np(&_files, STDERR_FILENO + 1));
        sigset_t signals;
        sigemptyset(&signals);
        check(posix_spawnattr_setsigmask(&_attributes, &signals));
        sigfillset(&signals);
        check(posix_spawnattr_setsigdefault(&_attributes, &signals));
        constexpr auto flags = POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF;
        check(posix_spawnattr_setflags(&_attributes, static_cast<short>(flags)));
        return _error;
    }

    const posix_spawn_file_actions_t* files() const { return &_files; }
    const posix_spawnattr_t* attributes() const { return &_attributes; }

private:
    void check(int error) {
        if (_error == 0) _error = error;
    }

    posix_spawn_file_actions_t _files;
    posix_spawnattr_t _attributes;
    int _error = 0;
};

// An errno value; 0 when all went well.
int start(const std::vector<std::string>& arguments, pid_t& process) {
    std::vector<char*> list;
    for (const std::string& argument : arguments)
        list.push_back(const_cast<char*>(argument.c_str()));
    list.push_back(nullptr);
    SpawnSettings settings;
    const int error = settings.prepare();
    if (error != 0) return error;
    return ::posix_spawnp(&process, list[0], settings.files(), settings.attributes(), list.data(), environ);
}

// Whether the process has ended, or ends before the time is up.
bool endsInTime(pid_t process, Clock::duration time) {
    const Descriptor handle{static_cast<int>(::syscall(SYS_pidfd_open, process, 0))};
    const auto deadline = Clock::now() + time;
    pollfd ended{handle.get(), POLLIN, 0};
    while (true) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        const int result = ::poll(&ended, 1, static_cast<int>(std::max<std::int64_t>(left, 0)));
        if (result >= 0 || errno != EINTR) return result > 0;
    }
}

int exitStatus(pid_t process) {
    int status = 0;
    pid_t result = -1;
    do {
        result = ::waitpid(process, &status, 0);
    } while (result < 0 && errno == EINTR);
    return result == process ? status : 0;
}

// The exit codes that these programs document.
const char* meaning(int code) {
    switch (code) {
        case 1:
            return "it does not understand what it was asked";
        case 2:
            return "a file is missing";
        case 3:
            return "it finds no program for this";
        case 4:
            return "the program that it has started failed";
        default:
            return nullptr;
    }
}

std::optional<std::string> failure(int status) {
    if (WIFSIGNALED(status)) return "it was ended by signal " + std::to_string(WTERMSIG(status));
    const int code = WEXITSTATUS(status);
    if (code == 0) return std::nullopt;
    const char* const known = meaning(code);
    return known == nullptr ? "exit status " + std::to_string(code) : known;
}

std::string startingError(const std::string& program, int error) {
    if (error == ENOENT) return program + " is not installed (it comes with xdg-utils)";
    return "cannot start " + program + ": " + errorText(error);
}

bool hasNul(const std::string& text) {
    return text.find('\0') != std::string::npos;
}

}  // namespace

bool XdgPrograms::run(const std::vector<std::string>& arguments, std::string& error) {
    reap();
    const std::string& program = arguments.front();
    if (std::ranges::any_of(arguments, hasNul)) {
        error = program + " takes no NUL byte";
        return false;
    }
    pid_t process = 0;
    if (const int failed = start(arguments, process); failed != 0) {
        error = startingError(program, failed);
        return false;
    }
    if (!endsInTime(process, patience)) {
        _running.push_back(process);
        return true;
    }
    const auto failed = failure(exitStatus(process));
    if (failed) error = program + ": " + *failed;
    return !failed;
}

void XdgPrograms::reap() {
    std::erase_if(_running, [](pid_t process) { return ::waitpid(process, nullptr, WNOHANG) != 0; });
}

}  // namespace hosts
