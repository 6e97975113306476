// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "hosts/phones/inspected_phone.h"
#include "hosts/session/installation.h"
#include "hosts/session/phone_options.h"
#include "hosts/session/skip_lines.h"

namespace hosts::terminal {

/// What a subcommand works on: the installation that the program belongs to, and the phone's folder.
struct ProgramContext {
    Installation installation;
    std::string phoneFolder;
    InspectedPhone files;
    const DeviceShape& device;
    /// The file of answers about the device that the user has named; empty for the phone's own.
    std::string deviceInformation;
    /// Says what is passed over on the phone; null where nobody wants to know.
    std::unique_ptr<SkipLines> skips;

    /// Opens the phone that the options name, or makes the default one on its first use. Nothing,
    /// with one line in `error`, when that does not work.
    static std::optional<ProgramContext> open(const PhoneOptions& options, std::string& error);
};

}  // namespace hosts::terminal
