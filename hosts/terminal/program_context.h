// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "hosts/linux/installation.h"
#include "hosts/linux/phone_file_system.h"
#include "hosts/session/device_shape.h"

namespace hosts::terminal {

/// The options that every subcommand takes.
struct CommonOptions {
    std::string phone;  ///< empty for the default phone
    const DeviceShape* device = &usualDeviceShape();
};

/// What a subcommand works on: the installation that the program belongs to, and the phone's folder.
struct ProgramContext {
    Installation installation;
    std::string phoneFolder;
    PhoneFileSystem files;
    const DeviceShape& device;

    /// Opens the phone that the options name, or makes the default one on its first use. Nothing,
    /// with one line in `error`, when that does not work.
    static std::optional<ProgramContext> open(const CommonOptions& options, std::string& error);
};

}  // namespace hosts::terminal
