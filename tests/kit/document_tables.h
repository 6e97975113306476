// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace kit {

/// Adds text to the file that the environment variable TRIVEL3_TABLES names, where it names one: what
/// tests have counted or measured, as a table for a document.
void addToTables(const std::string& text);

}  // namespace kit
