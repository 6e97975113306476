// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "platform/foundation/property_list/xml_numbers.h"

/// How an XML property list spells dates: in the Gregorian calendar, carried on in both directions.
namespace platform::property_list {

/// A date at the front of the text, `[-]Y…-MM-DDThh:mm:ssZ`, with a year of 32 bits. Days, hours,
/// minutes and seconds out of range roll over; so does month 13, while months 0 and from 14 on
/// count as January.
std::optional<Parsed<Date>> parseDate(const char* begin, const char* end);

/// Fractions of a second are floored. False when the date lies in no year of 32 bits.
bool appendDate(std::string& text, Date date);

}  // namespace platform::property_list
