// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "hosts/phones/far/sftp_session.h"
#include "hosts/phones/far/ssh_address.h"
#include "hosts/phones/waiting_shell.h"

namespace hosts {

/// What the user says of how a phone is reached.
struct SshOptions {
    std::string command = "ssh";  ///< OpenSSH's client, or what takes its options, as a shell has it
    std::string sftpServer;       ///< path of the server on the phone; empty where its sshd knows it
    std::string notify;           ///< command that posts, to which the name is added; empty for the phone's own
    bool mayAsk = false;          ///< whether there is a terminal on which ssh can ask
    std::shared_ptr<Waiting> waiting = std::make_shared<Waiting>();  ///< asked while the phone is waited for
};

/// What runs on the phone through OpenSSH's client, which brings the user's configuration, keys and known hosts. All
/// sessions share one connection where the server allows it, and none of them is given the user's agent or a way into
/// this machine's network.
class SshConnection {
public:
    SshConnection(SshAddress address, SshOptions options);
    SshConnection(const SshConnection&) = delete;
    SshConnection& operator=(const SshConnection&) = delete;
    ~SshConnection();

    const SshAddress& address() const { return _address; }
    const SshOptions& options() const { return _options; }

    /// The server of the phone's files. One that has been lost is connected with again. The pointer is good until this
    /// is next called.
    platform::Result<SftpSession*> files();
    /// Whether the last connection still stands, as far as it has shown.
    bool isConnected() const { return _files && _files->isAlive(); }
    /// Changes whenever `files` has connected again.
    unsigned generation() const { return _generation; }

    platform::Result<WaitingShell*> shell();
    /// Another program there. `command` is for the phone's shell.
    platform::Result<PipedProcess> start(const std::string& command);

private:
    std::vector<std::string> words(bool isFirst) const;
    platform::Problem stopped() const;
    platform::Problem explained(const platform::Problem& problem) const;

    SshAddress _address;
    SshOptions _options;
    std::string _controlPath;
    std::unique_ptr<SftpSession> _files;
    std::unique_ptr<WaitingShell> _shell;
    unsigned _generation = 0;
};

}  // namespace hosts
