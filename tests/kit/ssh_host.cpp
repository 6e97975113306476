// SPDX-License-Identifier: MIT
#include "tests/kit/ssh_host.h"

#include <arpa/inet.h>
#include <crypt.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <pwd.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <thread>

#include "hosts/phones/far/ssh_phone.h"
#include "tests/kit/distance.h"
#include "tests/kit/forked.h"

namespace kit {
namespace {

constexpr const char* knownAs = "the-phone";

void makePrivilegeFolder() {
    // Where the server is root it asks for this folder, which the system makes for its own server alone.
    if (::geteuid() == 0) std::filesystem::create_directories("/run/sshd");
}

std::string lines(const std::vector<std::string>& all) {
    std::string text;
    for (const std::string& line : all)
        text += line + "\n";
    return text;
}

bool accepts(std::uint16_t port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const hosts::Descriptor socket{::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)};
    return ::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

}  // namespace

SshHost::SshHost(const Options& options) : _options(options) {
    makePrivilegeFolder();
    makeKey(inside("host_key"));
    makeKey(inside("user_key"));
    std::filesystem::copy_file(inside("user_key.pub"), inside("authorized_keys"));
    writeText(inside("posted"), "");
    for (const char* folder : {"bin", "home"})
        std::filesystem::create_directory(inside(folder));
    if (options.hasNotifyutil) writeNotifyutil();
    if (!options.password.empty()) writeAccount();
    const std::string key = readText(inside("host_key.pub"));
    writeText(inside("known_hosts"), std::string(knownAs) + " " + key);
    start();
}

SshHost::~SshHost() {
    stop();
}

void SshHost::makeKey(const std::string& file) const {
    const Outcome made =
        ChildProcess({TEST_SSH_KEYGEN, "-q", "-t", _options.keyType, "-N", "", "-f", file}, ownEnvironment()).finish();
    if (made.status != 0) throw std::runtime_error{"ssh-keygen: " + made.errors};
}

// Each line goes out at once, and a watcher ends with what it is told by.
void SshHost::writeNotifyutil() const {
    const std::string posted = inside("posted");
    writeText(inside("bin/notifyutil"),
              "#!/bin/sh\n"
              "case $1 in\n"
              "-p) rm '" +
                  inside("swallowing") + "' 2>/dev/null || echo \"$2\" >>'" + posted +
                  "' ;;\n"
                  "-w) exec tail -n 0 -s 0.05 -F '" +
                  posted +
                  "' ;;\n"
                  "esac\n");
    ::chmod(inside("bin/notifyutil").c_str(), 0755);
}

// The tables of this machine's users but for this process's own, who has the password and a shell that lets in.
void SshHost::writeAccount() const {
    const passwd* const own = ::getpwuid(::geteuid());
    if (own == nullptr) throw std::runtime_error{"this process is no user's"};
    const std::string name = own->pw_name;
    std::string users = name + ":x:" + std::to_string(own->pw_uid) + ":" + std::to_string(own->pw_gid) +
                        "::" + _phone.around / "" + ":/bin/sh\n";
    for (const std::string& user : linesOf(readText("/etc/passwd")))
        if (!user.starts_with(name + ":")) users += user + "\n";
    writeText(inside("passwd"), users);
    writeText(inside("group"), readText("/etc/group"));
    crypt_data data{};
    const std::string hash = ::crypt_r(_options.password.c_str(), "$6$trivel3", &data);
    writeText(inside("shadow"), name + ":" + hash + ":19000:0:99999:7:::\n");
}

void SshHost::useAccount() const {
    ::setenv("LD_PRELOAD", TEST_NSS_WRAPPER, 1);
    ::setenv("NSS_WRAPPER_PASSWD", inside("passwd").c_str(), 1);
    ::setenv("NSS_WRAPPER_GROUP", inside("group").c_str(), 1);
    ::setenv("NSS_WRAPPER_SHADOW", inside("shadow").c_str(), 1);
}

void SshHost::start() {
    { const auto taken = listenOnLoopback(_port); }
    std::vector<std::string> configuration = _options.server;
    for (const std::string& line :
         {"Port " + std::to_string(_port), std::string("ListenAddress 127.0.0.1"), "HostKey " + inside("host_key"),
          std::string("PidFile none"), "AuthorizedKeysFile " + inside("authorized_keys"), std::string("StrictModes no"),
          std::string("UsePAM no"), std::string("PermitRootLogin yes"),
          std::string("PasswordAuthentication ") + (_options.password.empty() ? "no" : "yes"),
          std::string("KbdInteractiveAuthentication no"), std::string("MaxStartups 100"),
          // What the user's own shell reads when it starts may take longer than all that is measured.
          "SetEnv PATH=" + inside("bin") + ":/usr/bin:/bin HOME=" + inside("home")})
        configuration.push_back(line);
    if (_options.hasSubsystem) configuration.push_back("Subsystem sftp " TEST_SFTP_SERVER);
    writeText(inside("sshd_config"), lines(configuration));
    _server = startForked([this] {
        ::prctl(PR_SET_PDEATHSIG, SIGTERM);
        if (!_options.password.empty()) useAccount();
        // It writes to its log; what it still says when that is gone is about nothing else.
        const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
        ::dup2(nowhere, STDERR_FILENO);
        ::execl(TEST_SSHD, TEST_SSHD, "-D", "-f", inside("sshd_config").c_str(), "-E", inside("sshd.log").c_str(),
                nullptr);
        return 127;
    });
    if (_server < 0) throw std::runtime_error{"sshd cannot be started"};
    waitForServer();
}

void SshHost::waitForServer() const {
    const auto deadline = std::chrono::steady_clock::now() + ChildProcess::patience;
    while (!accepts(_port)) {
        const bool isLate = std::chrono::steady_clock::now() > deadline;
        if (isLate || ::kill(_server, 0) != 0) throw std::runtime_error{"sshd: " + readText(inside("sshd.log"))};
        std::this_thread::sleep_for(std::chrono::milliseconds{2});
    }
}

void SshHost::stop() {
    if (_server < 0) return;
    ::kill(_server, SIGTERM);
    waitForChild(_server);
    _server = -1;
}

void SshHost::changeKey() {
    stop();
    std::filesystem::remove(inside("host_key"));
    std::filesystem::remove(inside("host_key.pub"));
    makeKey(inside("host_key"));
    start();
}

std::string SshHost::address(std::uint16_t port) const {
    return "ssh://127.0.0.1:" + std::to_string(port) + _phone.folder;
}

std::string SshHost::ssh(const std::vector<std::string>& more) const {
    return TEST_SSH " -F " + writeConfiguration(more);
}

std::string SshHost::sshWithoutKey(const std::vector<std::string>& more) const {
    return TEST_SSH " -F " + writeConfigurationWithoutKey(more);
}

std::string SshHost::writeConfiguration(const std::vector<std::string>& more) const {
    std::vector<std::string> all = more;
    all.insert(all.end(), {"IdentityFile " + inside("user_key"), "IdentitiesOnly yes", "IdentityAgent none"});
    return writeConfigurationWithoutKey(all);
}

// "IdentityFile none" beside a file that is named changes nothing, and alone it keeps the user's own out of the test.
std::string SshHost::writeConfigurationWithoutKey(const std::vector<std::string>& more) const {
    const std::string file = inside("ssh_config");
    writeText(file, lines(more) + "IdentityFile none\nUserKnownHostsFile " + inside("known_hosts") +
                        "\nGlobalKnownHostsFile /dev/null\nHostKeyAlias " + knownAs + "\nCheckHostIP no\n");
    return file;
}

void SshHost::letUse(Trivel3ctl& program, std::uint16_t port) const {
    program.set("TRIVEL3_PHONE", address(port));
    program.set("TRIVEL3_SSH", ssh());
}

std::unique_ptr<hosts::Phone> SshHost::openPhone(const std::string& address) const {
    hosts::SshOptions options;
    options.command = ssh();
    auto opened = hosts::SshPhone::open(*hosts::parseSshAddress(address), options, "/none");
    if (!opened) throw std::runtime_error{opened.error().text()};
    return *std::move(opened);
}

void SshHost::nameModel(const std::string& model) const {
    writeText(_phone / "device-information.plist", settingsOf({{"ProductType", "<string>" + model + "</string>"}}));
}

std::string SshHost::fingerprint() const {
    const Outcome told = ChildProcess({TEST_SSH_KEYGEN, "-lf", inside("host_key.pub")}, ownEnvironment()).finish();
    std::istringstream words(told.output);
    std::string length;
    std::string fingerprint;
    words >> length >> fingerprint;
    return fingerprint;
}

std::vector<std::string> SshHost::posted() const {
    return linesOf(readText(inside("posted")));
}

void SshHost::swallowNextPost() const {
    writeText(inside("swallowing"), "");
}

void SshHost::post(const std::string& name) const {
    std::ofstream(inside("posted"), std::ios::app) << name << std::endl;
}

}  // namespace kit
