// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "hosts/phones/inspected_phone.h"
#include "hosts/session/installation.h"

namespace hosts {

/// What a program works on: the installation that it belongs to, and the phone's folder.
struct OpenedPhone {
    Installation installation;
    std::string folder;
    InspectedPhone files;
};

/// Opens the phone in the folder `named`, or the default one, which is made on its first use, when
/// the name is empty. Nothing, with one line in `error`, when that does not work.
std::optional<OpenedPhone> openPhone(const std::string& named, std::string& error);

}  // namespace hosts
