// SPDX-License-Identifier: MIT
#include "hosts/phones/far/ssh_connection.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <random>
#include <string_view>
#include <utility>

namespace hosts {
namespace {

using platform::Problem;
using platform::Result;

// With what ssh adds while it makes the socket, as much as a socket's address has room for.
constexpr std::size_t longestFolder = 60;

// Nobody else can put a socket of theirs there.
bool isOwnFolder(const std::string& path) {
    struct stat status {};
    constexpr mode_t others = 077;
    return ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == ::geteuid() &&
           (status.st_mode & others) == 0;
}

// The path of a socket of ssh's, which removes it when it ends. In one folder for all, so that nothing is left behind
// however this program ends. Empty where there is no such folder, and then nothing is shared.
std::string freshControlPath() {
    const char* const runtime = std::getenv("XDG_RUNTIME_DIR");
    for (const std::string& around : {std::string(runtime ? runtime : ""), std::string("/tmp")}) {
        const std::string folder = around + "/trivel3-ssh-" + std::to_string(::geteuid());
        if (!around.starts_with('/') || folder.size() > longestFolder) continue;
        ::mkdir(folder.c_str(), S_IRWXU);
        if (isOwnFolder(folder)) return folder + "/" + std::to_string(std::random_device{}());
    }
    return {};
}

/// What ssh says when it does not come about, and what its user can do.
struct Advice {
    std::string_view said;
    std::string_view advice;
};

constexpr Advice advices[] = {
    {"REMOTE HOST IDENTIFICATION HAS CHANGED",
     "another phone answers at this address than before, or somebody is in between; if it is your new or restored "
     "phone, "
     "'ssh-keygen -R HOST' forgets the old key"},
    {"Host key verification failed",
     "its key is not known here: connect once with 'ssh HOST' in a terminal and compare the fingerprint"},
    {"Permission denied", "no key fits, and no password was given that does: 'ssh-copy-id HOST' puts your key on it"},
    {"subsystem request failed",
     "the phone has no SFTP server: install openssh-sftp-server there, or name another by --sftp-server"},
    {"Connection refused", "no SSH server answers there: is OpenSSH installed on the phone, and the phone awake?"},
    {"timed out", "is the phone awake, and in the same network?"},
    {"No route to host", "is the phone awake, and in the same network?"},
    {"Could not resolve hostname", "is the name right?"},
};

// "no matching host key type found. Their offer: ssh-rsa" and its fellows, each with the line of the configuration that
// lets one such phone in.
struct Mismatch {
    std::string_view said;
    std::string_view setting;
};

constexpr Mismatch mismatches[] = {
    {"no matching host key type found", "HostKeyAlgorithms"},
    {"no matching key exchange method found", "KexAlgorithms"},
    {"no matching cipher found", "Ciphers"},
    {"no matching MAC found", "MACs"},
};

std::string offerIn(std::string_view text) {
    constexpr std::string_view before = "Their offer: ";
    const std::size_t at = text.find(before);
    if (at == text.npos) return {};
    const std::string_view offer = text.substr(at + before.size());
    return std::string(offer.substr(0, std::min(offer.find_first_of("\r\n"), offer.size())));
}

std::optional<std::string> mismatchAdvice(const std::string& said, const std::string& host) {
    for (const Mismatch& each : mismatches) {
        if (said.find(each.said) == said.npos) continue;
        std::string lines = std::string(each.setting) + " +" + offerIn(said);
        if (each.setting == "HostKeyAlgorithms") lines += "\", \"PubkeyAcceptedAlgorithms +" + offerIn(said);
        return "the phone is older than what ssh still accepts; to accept it from this host alone, put into "
               "~/.ssh/config: "
               "\"Host " +
               host + "\", \"" + lines + "\"";
    }
    return std::nullopt;
}

// Of all that ssh has said, the line that tells why.
std::string tellingLine(const std::string& said, std::string_view about) {
    const std::size_t at = about.empty() ? said.npos : said.find(about);
    std::size_t end = at == said.npos ? said.find_last_not_of("\r\n") + 1 : said.find_first_of("\r\n", at);
    end = std::min(end, said.size());
    const std::size_t start = end == 0 ? 0 : said.find_last_of("\r\n", end - 1) + 1;
    return said.substr(start, end - start);
}

}  // namespace

SshConnection::SshConnection(SshAddress address, SshOptions options)
    : _address(std::move(address)), _options(std::move(options)) {}

SshConnection::~SshConnection() {
    // The one that is shared goes last.
    _shell.reset();
    _files.reset();
}

std::vector<std::string> SshConnection::words(bool isFirst) const {
    std::vector<std::string> words{"-T"};
    const auto option = [&words](const std::string& text) { words.insert(words.end(), {"-o", text}); };
    for (const char* fixed : {"ForwardAgent=no", "ForwardX11=no", "ClearAllForwardings=yes", "RemoteCommand=none",
                              "ConnectTimeout=15", "ServerAliveInterval=5", "ServerAliveCountMax=3"})
        option(fixed);
    if (!_options.mayAsk) option("BatchMode=yes");
    option(isFirst && !_controlPath.empty() ? "ControlMaster=yes" : "ControlMaster=no");
    option("ControlPath=" + (_controlPath.empty() ? "none" : _controlPath));
    option("ControlPersist=no");
    if (!_address.user.empty()) words.insert(words.end(), {"-l", _address.user});
    if (!_address.port.empty()) words.insert(words.end(), {"-p", _address.port});
    return words;
}

Result<SftpSession*> SshConnection::files() {
    if (isConnected()) return _files.get();
    if (_options.waiting->isStopped()) return stopped();
    // What shared the connection is lost with it.
    _shell.reset();
    _files.reset();
    _controlPath = freshControlPath();
    std::vector<std::string> all = words(true);
    if (_options.sftpServer.empty()) {
        all.insert(all.end(), {"-s", "--", _address.host, "sftp"});
    } else {
        all.insert(all.end(), {"--", _address.host, "exec " + shellQuoted(_options.sftpServer)});
    }
    auto process = PipedProcess::start(_options.command, all, _options.waiting);
    if (!process) return explained(process.error());
    // Whoever is asked for a password, or whether a key is right, takes the time that it takes.
    auto session = SftpSession::open(*std::move(process), _options.mayAsk ? Deadline() : Deadline(answerPatience));
    if (!session) return _options.waiting->isStopped() ? stopped() : explained(session.error());
    _files = *std::move(session);
    ++_generation;
    return _files.get();
}

Result<WaitingShell*> SshConnection::shell() {
    if (_shell && _shell->isAlive()) return _shell.get();
    auto process = start("exec /bin/sh");
    if (!process) return process.error();
    _shell = std::make_unique<WaitingShell>(*std::move(process));
    return _shell.get();
}

Result<PipedProcess> SshConnection::start(const std::string& command) {
    if (_options.waiting->isStopped()) return stopped();
    std::vector<std::string> all = words(false);
    all.insert(all.end(), {"--", _address.host, command});
    return PipedProcess::start(_options.command, all, _options.waiting);
}

Problem SshConnection::stopped() const {
    return {_address.text(), "cannot connect to", stoppedWaiting, true};
}

Problem SshConnection::explained(const Problem& problem) const {
    const std::string& said = problem.reason;
    std::string why = tellingLine(said, {});
    if (const auto advice = mismatchAdvice(said, _address.host)) {
        why = tellingLine(said, "no matching") + "; " + *advice;
    } else {
        const auto known =
            std::ranges::find_if(advices, [&said](const Advice& each) { return said.find(each.said) != said.npos; });
        if (known != std::end(advices)) {
            std::string todo(known->advice);
            for (std::size_t at = todo.find("HOST'"); at != todo.npos; at = todo.find("HOST'", at + 1))
                todo.replace(at, 4, _address.host);
            why = tellingLine(said, known->said) + "; " + todo;
        }
    }
    return {_address.text(), "cannot connect to", why + " (ways to a phone: docs/phones.md)", true};
}

}  // namespace hosts
