// SPDX-License-Identifier: MIT
// The work of the pages of applications, done by a program that uses libplist, and the bare system
// calls of it.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace benchmarks {

/// What a page needs of an application.
struct PeerApplication {
    std::string displayName;
    std::string folder;
    std::vector<std::string> iconNames;
};

/// By identifier.
using PeerApplications = std::map<std::string, PeerApplication>;

/// Finds the applications below the folder that stands for the phone's root. Every Info.plist and
/// every property list of English names is parsed whole.
PeerApplications findWithLibplist(const std::string& phone);

/// Lists the same folders and reads the same files, and does nothing with them. Says how many files
/// there were.
std::size_t findWithBareCalls(const std::string& phone);

/// Lists the folders alone. Says how many applications there are.
std::size_t listWithBareCalls(const std::string& phone);

/// Where the ticks of a page are: in a file, or in a dictionary of the file.
struct TickPlace {
    std::string file;      ///< the machine's path
    std::string outerKey;  ///< empty when the file holds nothing but ticks
};

/// Parses the whole file for one tick.
bool readTickWithLibplist(const TickPlace& place, const std::string& identifier);

/// Parses the file once for all these ticks; says how many are set.
std::size_t readTicksWithLibplist(const TickPlace& place, const std::vector<std::string>& identifiers);

enum class TickFlush { nothing, fileAndFolder };

/// Parses the file, sets one tick, and replaces the file by one rename. False when that fails.
bool writeTickWithLibplist(const TickPlace& place, const std::string& identifier, bool ticked, TickFlush flush);

/// Replaces the file with these bytes by one rename.
bool replaceFile(const std::string& file, const char* bytes, std::size_t length, TickFlush flush);

/// Reads a file with three system calls; says how many bytes it has.
std::size_t readBare(const std::string& file, std::vector<char>& bytes);

}  // namespace benchmarks
