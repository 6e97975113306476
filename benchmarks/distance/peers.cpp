// SPDX-License-Identifier: MIT
#include "peers.h"

#include <stdexcept>

#include "tests/kit/child_process.h"
#include "tests/kit/phone.h"

namespace distance {

using namespace kit;

MountedPhone::MountedPhone(const SshHost& host, std::uint16_t port) {
    mount({BENCHMARK_SSHFS, "127.0.0.1:" + host.phone().folder, folder(), "-f", "-p", std::to_string(port), "-o",
           "ssh_command=" + host.ssh()});
}

void runSftp(const SshHost& host, std::uint16_t port, const std::vector<std::string>& commands) {
    std::string batch;
    for (const std::string& command : commands)
        batch += command + "\n";
    writeText(host.inside("batch"), batch);
    const Outcome outcome = ChildProcess({BENCHMARK_SFTP, "-q", "-F", host.writeConfiguration(), "-P",
                                          std::to_string(port), "-b", host.inside("batch"), "127.0.0.1"},
                                         ownEnvironment())
                                .finish();
    if (outcome.status != 0) throw std::runtime_error{"sftp: " + outcome.errors};
}

std::vector<std::string> readingOfSettings(const SshHost& host) {
    return {"get " + host.phone().settingsFile() + " " + host.inside("fetched")};
}

std::vector<std::string> changeOfSettings(const SshHost& host) {
    const std::string file = host.phone().settingsFile();
    return {"get " + file + " " + host.inside("fetched"), "put " + host.inside("fetched") + " " + file + ".new",
            "rename " + file + ".new " + file};
}

}  // namespace distance
