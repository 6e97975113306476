// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "platform/foundation/property_list.h"

/// What must hold for any bytes at all. Each check ends the program with a line that says what did
/// not hold.
namespace fuzz {

/// An error points into the file and says something.
void checkError(std::string_view bytes, const platform::PropertyListReading& reading);

/// Reading some keys without making the tree says what the tree says: for each key of the root, for all of them,
/// and for a key that is not there.
void checkRootKeys(std::string_view bytes, const platform::PropertyListReading& reading);

/// What is written as XML is read as the same value and written as the same bytes.
void checkXmlForm(const platform::Value& value);

/// What is written as a binary property list is read as the same value.
void checkBinaryForm(const platform::Value& value);

/// libplist reads the same, where nothing known stands against it. With TRIVEL3_FUZZ_DIFFERENCES=FOLDER a
/// difference is kept as a file in that folder and does not end the program.
void checkAgainstLibplist(std::string_view bytes, const platform::PropertyListReading& reading);

}  // namespace fuzz
