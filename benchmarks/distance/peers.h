// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tests/kit/mount.h"
#include "tests/kit/ssh_host.h"

namespace distance {

/// A far phone as sshfs mounts it, by this port. For where folders can be mounted: `kit::whyNoMounts`.
class MountedPhone : public kit::Mount {
public:
    MountedPhone(const kit::SshHost& host, std::uint16_t port);
};

/// OpenSSH's own `sftp` at these commands, which connects first. Throws std::runtime_error where it fails.
void runSftp(const kit::SshHost& host, std::uint16_t port, const std::vector<std::string>& commands);

/// What a reading of the settings, and a change of them, asks of the protocol at least.
std::vector<std::string> readingOfSettings(const kit::SshHost& host);
std::vector<std::string> changeOfSettings(const kit::SshHost& host);

}  // namespace distance
