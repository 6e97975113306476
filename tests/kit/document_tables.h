// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

namespace kit {

/// Adds text to the file that the environment variable TRIVEL3_TABLES names, where it names one: what
/// tests have counted or measured, as a table for a document.
void addToTables(const std::string& text);

/// How many changes the environment variable TRIVEL3_CHANGES asks tests for that count what is lost; nothing for as
/// many as usual.
std::optional<int> changesAsked();

}  // namespace kit
