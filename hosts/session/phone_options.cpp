// SPDX-License-Identifier: MIT
#include "hosts/session/phone_options.h"

#include <CLI/CLI.hpp>
#include <vector>

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

}  // namespace

void PhoneOptions::addTo(CLI::App& app) {
    app.add_option("--phone", phone,
                   "Folder that stands for the root of the phone's file system, or file with a support report")
        ->envname("TRIVEL3_PHONE")
        ->check(notEmpty("folder"))
        ->type_name("DIR");
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
