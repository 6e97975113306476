// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "tests/kit/phone.h"

namespace kit {

/// Why nobody can mount a folder here; empty where one can.
const std::string& whyNoMounts();

/// A phone whose folder a program of the test's own mounts in a second place. At the end it is unmounted and its
/// programs have ended; they end as well when the test's process does, however that comes. What does not come about
/// throws std::runtime_error.
class Mount {
public:
    Mount(const Mount&) = delete;
    Mount& operator=(const Mount&) = delete;
    virtual ~Mount() { unmount(); }

    /// Where the phone is mounted: what programs are to work on.
    const std::string& folder() const { return _folder; }
    std::string settingsFile() const { return _folder + settingsPath; }

    /// The phone as its own side has it.
    const Phone& behind() const { return _behind; }

    /// Nobody answers for the mount any more; it stays where it is.
    void killProgram();

    /// Leaves the bare folder on which it was mounted.
    void unmount();

protected:
    Mount();

    /// Starts a program that ends with this process. `stream`, where there is one, is its standard input and output.
    pid_t start(const std::vector<std::string>& command, int stream = -1);
    /// Starts the program that mounts, and waits until it has.
    void mount(const std::vector<std::string>& command, int stream = -1);
    /// Kills a program that was started, and waits for its end.
    void kill(pid_t program);

private:
    bool isMounted() const;

    Phone _behind;
    std::string _folder;
    pid_t _program = -1;
    std::vector<pid_t> _running;
};

/// A phone mounted by sshfs over a real SFTP server, without a network between them.
class SshfsMount : public Mount {
public:
    struct Options {
        std::vector<std::string> mount;   ///< each as it follows -o
        std::vector<std::string> server;  ///< as the SFTP server takes them
    };

    SshfsMount() : SshfsMount(Options{}) {}
    explicit SshfsMount(const Options& options);

    /// As when the phone is switched off or goes out of reach.
    void killServer() { kill(_server); }

private:
    pid_t _server = -1;
};

/// A phone mounted by a file system that promises less than a local one: lesser_file_system.cpp says what.
class LesserMount : public Mount {
public:
    explicit LesserMount(const std::vector<std::string>& qualities);

    /// From now on whoever reads a file meets an input/output error, or nobody does any more.
    void setReadingFails(bool fails);

private:
    std::string readingFailsFile() const { return behind().around / "reading-fails"; }
};

}  // namespace kit
