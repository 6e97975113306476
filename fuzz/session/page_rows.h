// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace fuzz {

/// The pages of the pane that show settings.
const std::vector<std::string_view>& pageNames();

/// Whether a page with any settings at all may have these rows: those of its table, in order, without
/// some of those that come and go.
bool mayShow(std::string_view page, const std::vector<std::string>& labels);

}  // namespace fuzz
