// SPDX-License-Identifier: MIT
#include "hosts/desktop/program/options.h"

#include <CLI/CLI.hpp>
#include <vector>

#include "hosts/desktop/program/exit_status.h"

namespace hosts::desktop {
namespace {

std::vector<std::string> deviceNames() {
    std::vector<std::string> names;
    for (const DeviceShape& shape : deviceShapes())
        names.emplace_back(shape.name);
    return names;
}

}  // namespace

std::optional<Options> parseOptions(int argumentCount, char** arguments, int& status) {
    Options options;
    std::string device{usualDeviceShape().name};
    std::string appearance;
    CLI::App app{"The settings of Trivel 3 in a window"};
    app.name("trivel3-settings");
    app.set_version_flag("--version", "trivel3-settings " TRIVEL3_VERSION);
    app.set_help_flag("--help", "Print this help and exit");
    app.add_option("--phone", options.phone, "Folder that stands for the root of the phone's file system")
        ->envname("TRIVEL3_PHONE")
        ->type_name("DIR");
    app.add_option("--device", device, "The phone's shape")->check(CLI::IsMember(deviceNames()))->type_name("NAME");
    app.add_option("--appearance", appearance, "light or dark, whatever the desktop's is")
        ->check(CLI::IsMember({"light", "dark"}))
        ->type_name("NAME");
    app.add_option("--screenshots", options.screenshots, "Draw every page into PNG files in this folder and exit")
        ->type_name("DIR");
    app.add_flag("--verbose", options.verbose, "Say on standard error what is passed over on the phone, and why");
    try {
        app.parse(argumentCount, arguments);
    } catch (const CLI::ParseError& error) {
        const bool isAnswer = error.get_exit_code() == 0;
        status = isAnswer ? app.exit(error)
                          : fail(wrongUsage, std::string(error.what()) + " (see 'trivel3-settings --help')");
        return std::nullopt;
    }
    options.device = findDeviceShape(device);
    if (!appearance.empty()) options.dark = appearance == "dark";
    return options;
}

}  // namespace hosts::desktop
