// SPDX-License-Identifier: MIT
#include "hosts/hand_over/xdg_programs.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <optional>
#include <thread>

#include "hosts/system/deadline.h"
#include "hosts/system/error_text.h"
#include "hosts/system/file_calls.h"

namespace hosts {

namespace {

using platform::Problem;

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

// How the process ended; nothing when it does not in that time. Asked for again and again, since not
// every kernel and sandbox gives a descriptor that tells of it.
std::optional<int> endInTime(pid_t process, const Deadline& deadline) {
    constexpr std::chrono::milliseconds pause{5};
    int status = 0;
    while (uninterrupted([&] { return ::waitpid(process, &status, WNOHANG); }) == 0) {
        if (deadline.left() == 0) return std::nullopt;
        std::this_thread::sleep_for(pause);
    }
    return status;
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

Problem startingProblem(const std::string& program, int error) {
    if (error == ENOENT) return {.reason = program + " is not installed (it comes with xdg-utils)"};
    return {{}, "cannot start " + program, errorText(error)};
}

bool hasNul(const std::string& text) {
    return text.find('\0') != std::string::npos;
}

}  // namespace

XdgPrograms::XdgPrograms() {
    std::signal(SIGCHLD, SIG_DFL);
}

platform::Result<platform::Done> XdgPrograms::run(const std::vector<std::string>& arguments) {
    reap();
    const std::string& program = arguments.front();
    if (std::ranges::any_of(arguments, hasNul)) return Problem{.reason = program + " takes no NUL byte"};
    pid_t process = 0;
    if (const int error = start(arguments, process); error != 0) return startingProblem(program, error);
    const auto end = endInTime(process, patience);
    if (!end) _running.push_back(process);
    if (auto failed = end ? failure(*end) : std::nullopt) return Problem{{}, program, *std::move(failed)};
    return platform::Done();
}

void XdgPrograms::reap() {
    std::erase_if(_running, [](pid_t process) { return ::waitpid(process, nullptr, WNOHANG) != 0; });
}

}  // namespace hosts
