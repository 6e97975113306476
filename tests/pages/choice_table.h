// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>
#include <vector>

#include "pane.h"

namespace pages_test {

/// A choice row, or the titled group row ahead of some.
struct TableRow {
    std::string_view label;
    std::string_view key = {};
    int value = 0;
};

/// Expects that a newly made page of the class has these rows first, without footers.
void expectRows(Pane& pane, std::string_view className, const std::vector<TableRow>& table);

}  // namespace pages_test
