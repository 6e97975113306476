// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "hosts/phones/history_entry.h"

namespace hosts::terminal {

/// "KEY: old -> new" or "KEY/ENTRY: old -> new", on one line.
std::string changeSummary(const HistoryEntry& entry);

}  // namespace hosts::terminal
