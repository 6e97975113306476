// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "hosts/phones/phone.h"

namespace hosts {

/// A customer's phone as far as its support report tells of it: the settings, the answers about the device and the list
/// of packages. Applications are those that the settings tick, by their identifiers, and there are no exceptions. What
/// is changed stays in memory, and nobody is notified.
///
/// `name` is what the report is called. A problem for what is no report, in either encoding of a property list.
platform::Result<std::unique_ptr<Phone>> openReport(std::string_view bytes, const std::string& name);

}  // namespace hosts
