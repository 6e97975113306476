// SPDX-License-Identifier: MIT
#include "pane.h"

#include <gtest/gtest.h>

#include <utility>

namespace pages_test {
namespace {

using Kind = kit::ExpectedRow::Kind;
using platform::PSCellType;

PSCellType cellType(Kind kind) {
    switch (kind) {
        case Kind::switchRow:
            return PSCellType::switchCell;
        case Kind::choice:
            return PSCellType::listItem;
        case Kind::link:
            return PSCellType::link;
        case Kind::group:
            break;
    }
    return PSCellType::group;
}

void expectRow(const platform::PSSpecifier& row, const kit::ExpectedRow& expected,
               const platform::PSListController& page) {
    const bool isSwitch = expected.kind == Kind::switchRow;
    const bool isLink = expected.kind == Kind::link;
    EXPECT_EQ(row.cellType(), cellType(expected.kind));
    EXPECT_EQ(row.name(), expected.label);
    EXPECT_EQ(row.textForKey("footerText").value_or(""), expected.footer);
    EXPECT_EQ(row.iconImage() ? row.iconImage()->name() : "", expected.image);
    EXPECT_EQ(row.target(), expected.kind == Kind::group ? nullptr : &page);
    EXPECT_EQ(row.identifier().value_or(""), isSwitch ? expected.key : "");
    EXPECT_EQ(static_cast<bool>(row.setter()), isSwitch);
    EXPECT_EQ(static_cast<bool>(row.getter()), isSwitch);
    EXPECT_EQ(row.detailControllerClass(), isLink ? expected.key : "");
    EXPECT_EQ(static_cast<bool>(row.action), isLink && expected.key.empty());
    std::optional<platform::Value> info;
    if (expected.kind == Kind::choice) {
        info = platform::Dictionary{{"identifier", expected.key}, {"value", expected.value}};
    }
    EXPECT_EQ(row.userInfo(), info);
}

}  // namespace

void Pane::setInFile(std::string_view key, platform::Value value) {
    platform::Dictionary settings = file().value_or(platform::Dictionary());
    settings.set(key, std::move(value));
    setFile(settings);
}

std::optional<platform::Value> Pane::stored(std::string_view key) const {
    const auto settings = file();
    const platform::Value* value = settings ? settings->find(key) : nullptr;
    if (!value) return std::nullopt;
    return *value;
}

platform::Value Pane::fileValue() const {
    auto settings = file();
    return settings ? platform::Value(*std::move(settings)) : platform::Value();
}

void expectRows(Pane& pane, const kit::PageTable& table) {
    auto page = pane.classes.make<platform::PSListController>(table.className, pane.services());
    ASSERT_TRUE(page);
    const auto& rows = page->specifiers();
    ASSERT_EQ(rows.size(), table.rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        SCOPED_TRACE(i);
        expectRow(*rows[i], table.rows[i], *page);
    }
}

}  // namespace pages_test
