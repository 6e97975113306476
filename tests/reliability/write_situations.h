// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tests/kit/phone.h"

namespace reliability_test {

using namespace kit;

/// A state in which a write may find the phone.
struct WriteSituation {
    std::string name;
    std::function<void(const Phone&)> prepare;
    bool hasOldFile = true;
    std::string path = settingsPath;    ///< what is written, as the phone names it
    std::string file = path.substr(1);  ///< where its content lies, below the phone's folder
};

/// Where the old file has an owner and permissions of its own, as far as this process may give them.
const std::vector<WriteSituation>& writeSituations();

/// What stands there before the write, and what is written.
std::string contentBefore(const WriteSituation& situation);
std::string contentWanted();

/// The file's owner, group and permissions as one text; empty when there is none.
std::string attributesOf(const std::string& file);
/// Those that the file must have after a write of the phone as it is now.
std::string attributesWanted(const WriteSituation& situation, const Phone& phone);

/// The calls of a write that meets no fault, by the names that WatchedCalls gives them.
std::vector<std::string> callsOfAWrite(const WriteSituation& situation);
/// The kernel's name of such a call.
std::string systemCallOf(const std::string& call);

}  // namespace reliability_test
