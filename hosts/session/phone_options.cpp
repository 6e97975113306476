// SPDX-License-Identifier: MIT
#include "hosts/session/phone_options.h"

#include <CLI/CLI.hpp>
#include <vector>

#include "hosts/phones/far/ssh_address.h"

namespace hosts {
namespace {

std::vector<std::string> deviceNames() {
    std::vector<std::string> names;
    for (const DeviceShape& shape : deviceShapes())
        names.emplace_back(shape.name);
    return names;
}

// Taken for none, a variable that is empty in a script would lead to the wrong phone.
CLI::Validator notEmpty(const char* what) {
    const std::string problem = "an empty name is no " + std::string(what);
    return CLI::Validator([problem](const std::string& name) { return name.empty() ? problem : std::string(); }, "");
}

// Before anything is asked of it.
std::string faultOfAddress(const std::string& named) {
    if (!namesSshAddress(named)) return {};
    const auto address = parseSshAddress(named);
    return address ? std::string() : address.error().text();
}

}  // namespace

void PhoneOptions::addTo(CLI::App& app) {
    app.add_option("--phone", phone,
                   "Folder that stands for the root of the phone's file system, file with a support report, or "
                   "ssh://[USER@]HOST[:PORT][/FOLDER]")
        ->envname("TRIVEL3_PHONE")
        ->check(notEmpty("folder"))
        ->check(CLI::Validator(faultOfAddress, ""))
        ->type_name("WHERE");
    app.add_option("--ssh", ssh.command, "Command that reaches a phone at an address, in the place of ssh")
        ->envname("TRIVEL3_SSH")
        ->check(notEmpty("command"))
        ->type_name("COMMAND");
    app.add_option("--sftp-server", ssh.sftpServer, "SFTP server on a phone at an address, where sshd knows none")
        ->check(notEmpty("file"))
        ->type_name("PATH");
    app.add_option("--notify", ssh.notify,
                   "Command that tells a phone of a change, to which the notification's name is added")
        ->envname("TRIVEL3_NOTIFY")
        ->check(notEmpty("command"))
        ->type_name("COMMAND");
    app.add_option("--device-information", deviceInformation,
                   "Property list of answers about the device, for the support report")
        ->check(notEmpty("file"))
        ->type_name("FILE");
    app.add_option_function<std::string>(
           "--device",
           [this](const std::string& name) {
               device = findDeviceShape(name);
               isDeviceNamed = true;
           },
           "The phone's shape")
        ->check(CLI::IsMember(deviceNames()))
        ->type_name("NAME");
    app.add_flag("--create", create, "Use the phone's folder as it is, though it was a mount and is none now");
    app.add_flag("--verbose", verbose, "Say on standard error what is passed over on the phone, and why");
}

}  // namespace hosts
