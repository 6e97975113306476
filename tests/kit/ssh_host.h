// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "hosts/phones/phone.h"
#include "tests/kit/phone.h"
#include "tests/kit/trivel3ctl.h"

namespace kit {

/// What is posted after each change of the settings.
constexpr const char* preferencesChanged = "com.fenwary.trivel3.preferencesChanged";

/// A phone behind a real SSH server on the loopback address: with keys, a configuration and a notification centre of
/// its own, which is a script that writes down what it is told. The server ends with this object. What does not come
/// about throws std::runtime_error.
class SshHost {
public:
    struct Options {
        std::vector<std::string> server = {};  ///< lines of the server's configuration, which go before the usual ones
        bool hasSubsystem = true;
        bool hasNotifyutil = true;
        std::string keyType = "ed25519";  ///< of its own key and of the user's, as ssh-keygen has it
        std::string password = {};  ///< of the user's account there, which has none on this machine; empty for none
    };

    SshHost() : SshHost(Options{}) {}
    explicit SshHost(const Options& options);
    SshHost(const SshHost&) = delete;
    SshHost& operator=(const SshHost&) = delete;
    ~SshHost();

    const Phone& phone() const { return _phone; }
    std::uint16_t port() const { return _port; }
    /// By this port, which may be that of a way to the server's own.
    std::string address(std::uint16_t port) const;
    std::string address() const { return address(_port); }

    /// The command that reaches it as a user who has been there before; `more` goes into its configuration first.
    std::string ssh(const std::vector<std::string>& more = {}) const;
    /// The same for a user who has no key in a file.
    std::string sshWithoutKey(const std::vector<std::string>& more = {}) const;
    /// The file with the configuration of `ssh`, for programs that take one.
    std::string writeConfiguration(const std::vector<std::string>& more = {}) const;
    /// The phone itself, connected with by an address of this host.
    std::unique_ptr<hosts::Phone> openPhone(const std::string& address) const;
    /// Has the program use this host, by this port.
    void letUse(Trivel3ctl& program, std::uint16_t port) const;
    void letUse(Trivel3ctl& program) const { letUse(program, _port); }

    /// Has the phone say of what model it is: a public model identifier.
    void nameModel(const std::string& model) const;

    /// The notifications that the phone has been told of, in their order.
    std::vector<std::string> posted() const;
    /// As an add-on of the phone posts.
    void post(const std::string& name) const;
    /// The next post of a program on this machine is told to nobody, as where a phone makes one of two.
    void swallowNextPost() const;

    /// Another key from here on, as that of another phone.
    void changeKey();
    /// The fingerprint of its key, as ssh shows it.
    std::string fingerprint() const;
    std::string inside(const std::string& name) const { return _phone.around / name; }

private:
    void makeKey(const std::string& file) const;
    void writeNotifyutil() const;
    void writeAccount() const;
    void useAccount() const;
    std::string writeConfigurationWithoutKey(const std::vector<std::string>& more) const;
    void start();
    void stop();
    void waitForServer() const;

    Phone _phone;
    Options _options;
    std::uint16_t _port = 0;
    pid_t _server = -1;
};

}  // namespace kit
