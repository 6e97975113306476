// SPDX-License-Identifier: MIT
#include "choice_table.h"

#include <gtest/gtest.h>

namespace pages_test {
namespace {

std::optional<platform::Value> userInfo(const TableRow& row) {
    if (row.key.empty()) return std::nullopt;
    return platform::Dictionary{{"identifier", row.key}, {"value", row.value}};
}

}  // namespace

void expectRows(Pane& pane, std::string_view className, const std::vector<TableRow>& table) {
    auto page = pane.classes.make<platform::PSListController>(className, pane.services());
    ASSERT_TRUE(page);
    const auto& rows = page->specifiers();
    ASSERT_EQ(rows.size(), table.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(rows[i]->name(), table[i].label);
        EXPECT_EQ(rows[i]->cellType(),
                  table[i].key.empty() ? platform::PSCellType::group : platform::PSCellType::listItem);
        EXPECT_EQ(rows[i]->userInfo(), userInfo(table[i]));
        EXPECT_EQ(rows[i]->textForKey("footerText"), std::nullopt);
    }
}

}  // namespace pages_test
