// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace hosts {

/// Where a phone's package manager keeps its database.
constexpr std::string_view packageDatabase = "/var/lib/dpkg/status";

/// The add-on's own package.
constexpr std::string_view addOnPackage = "com.fenwary.trivel3";

/// The version of a package by the text of such a database; nothing for one that is not installed. It may hold any
/// bytes.
std::optional<std::string> installedVersion(std::string_view database, std::string_view package);

}  // namespace hosts
