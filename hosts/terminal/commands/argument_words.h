// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "hosts/session/completion.h"

namespace hosts::terminal {

/// The words that an argument of a subcommand may be, as the phone that is given stands now: settings, their values,
/// pages, numbers of changes. The phone is looked at alone, and a default phone is not made. None where it cannot be
/// looked at.
std::vector<Candidate> wordsOfArgument(const std::string& argument, const GivenValues& given);

}  // namespace hosts::terminal
