// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

namespace benchmarks {

/// More than any phone holds.
inline constexpr std::size_t manyApplications = 10'000;

/// The bundle identifier of the application of this number, up to 99,999.
std::string sampleIdentifier(std::size_t number);

/// Installs applications like those of a store, with these numbers from 0 on, below the folder that
/// stands for the phone's root:
/// - an Info.plist of 4 KB as XML or 3 KB as binary, in turn;
/// - English names in every second one, as a property list or in the old text form, in turn;
/// - icons in nine of ten: 120 pixels wide, and in two of three of them also the 58 that a row shows,
///   as ordinary PNG files or in the phone's own form, in turn.
/// One in twenty is the system's, the others are the user's, each in a folder with a random name.
void installSampleApplications(const std::string& phone, std::size_t count);

}  // namespace benchmarks
