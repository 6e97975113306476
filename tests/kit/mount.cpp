// SPDX-License-Identifier: MIT
#include "tests/kit/mount.h"

#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <thread>

#include "hosts/system/descriptor.h"
#include "tests/kit/child_process.h"
#include "tests/kit/forked.h"

namespace kit {

namespace {

using hosts::Descriptor;

std::array<Descriptor, 2> connectedSockets(int flags) {
    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | flags, 0, ends) != 0) {
        throw std::system_error{errno, std::generic_category(), "socketpair"};
    }
    return {Descriptor{ends[0]}, Descriptor{ends[1]}};
}

Outcome unmountFolder(const std::string& folder, const std::string& how) {
    return ChildProcess({TEST_FUSERMOUNT, how, folder}, ownEnvironment()).finish();
}

// Asks the program that mounts for whoever may not do it himself. It hands the open file system over by a socket,
// which nobody reads here.
std::string tryToMount() {
    const TemporaryFolder folder;
    Outcome outcome;
    {
        const auto sockets = connectedSockets(0);
        Environment environment = ownEnvironment();
        environment["_FUSE_COMMFD"] = std::to_string(sockets[0].get());
        outcome = ChildProcess({TEST_FUSERMOUNT, "--", folder.path()}, environment).finish();
    }
    if (outcome.status != 0) return "no folder can be mounted here: " + outcome.errors;
    unmountFolder(folder.path(), "-uz");
    return {};
}

bool hasEnded(pid_t program) {
    siginfo_t info{};
    return ::waitid(P_PID, static_cast<id_t>(program), &info, WEXITED | WNOHANG | WNOWAIT) == 0 && info.si_pid != 0;
}

}  // namespace

const std::string& whyNoMounts() {
    static const std::string reason = tryToMount();
    return reason;
}

Mount::Mount() : _folder(_behind.around / "mount") {
    std::filesystem::create_directory(_folder);
}

pid_t Mount::start(const std::vector<std::string>& command, int stream) {
    const std::vector<char*> arguments = pointersTo(command);
    const pid_t program = startForked([&] {
        ::prctl(PR_SET_PDEATHSIG, SIGTERM);
        if (stream >= 0 && (::dup2(stream, STDIN_FILENO) < 0 || ::dup2(stream, STDOUT_FILENO) < 0)) return 127;
        ::execv(arguments[0], arguments.data());
        return 127;
    });
    if (program < 0) throw std::system_error{errno, std::generic_category(), "fork"};
    _running.push_back(program);
    return program;
}

bool Mount::isMounted() const {
    struct stat around {};
    struct stat here {};
    return ::stat(_behind.around.path().c_str(), &around) == 0 && ::stat(_folder.c_str(), &here) == 0 &&
           around.st_dev != here.st_dev;
}

void Mount::mount(const std::vector<std::string>& command, int stream) {
    _program = start(command, stream);
    const auto deadline = std::chrono::steady_clock::now() + ChildProcess::patience;
    while (!isMounted()) {
        const bool isLate = std::chrono::steady_clock::now() > deadline;
        if (isLate || hasEnded(_program)) throw std::runtime_error{command.front() + " does not mount"};
        std::this_thread::sleep_for(std::chrono::milliseconds{1});
    }
}

void Mount::kill(pid_t program) {
    if (std::erase(_running, program) == 0) return;
    ::kill(program, SIGKILL);
    waitForChild(program);
}

void Mount::killProgram() {
    kill(_program);
}

void Mount::unmount() {
    // The second is for one that somebody still has a file of open.
    if (unmountFolder(_folder, "-u").status != 0) unmountFolder(_folder, "-uz");
    for (const pid_t program : _running) {
        ::kill(program, SIGTERM);
        waitForChild(program);
    }
    _running.clear();
}

SshfsMount::SshfsMount(const Options& options) {
    const auto sockets = connectedSockets(SOCK_CLOEXEC);
    std::vector<std::string> server{TEST_SFTP_SERVER};
    server.insert(server.end(), options.server.begin(), options.server.end());
    _server = start(server, sockets[0].get());
    std::vector<std::string> command{TEST_SSHFS, "phone:" + behind().folder, folder(), "-f", "-o", "passive"};
    for (const std::string& option : options.mount)
        command.insert(command.end(), {"-o", option});
    mount(command, sockets[1].get());
}

LesserMount::LesserMount(const std::vector<std::string>& qualities) {
    std::vector<std::string> command{TEST_LESSER_FILE_SYSTEM, behind().folder, folder(),
                                     "reading-fails=" + readingFailsFile()};
    command.insert(command.end(), qualities.begin(), qualities.end());
    mount(command);
}

void LesserMount::setReadingFails(bool fails) {
    if (fails) {
        writeText(readingFailsFile(), "");
    } else {
        std::filesystem::remove(readingFailsFile());
    }
}

}  // namespace kit
