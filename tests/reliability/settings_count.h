// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

/// Settings files of which it can be counted how many settings they have lost.
namespace reliability_test {

/// Every key of the catalogue, as a property list. Of two files with different numbers every value differs.
std::string settingsNumber(int number);

/// How many of the settings of the two files are in neither of their states in the one that was found, where no
/// file is one without settings.
std::size_t settingsLost(const std::string& before, const std::string& wanted, const std::string& found);

}  // namespace reliability_test
