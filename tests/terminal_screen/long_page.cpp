// SPDX-License-Identifier: MIT
#include "tests/terminal_screen/long_page.h"

namespace terminal_screen_test {

using namespace hosts::terminal;
using namespace hosts::terminal::screen;

const platform::PSListController::Specifiers& LongPage::specifiers() {
    if (hasSpecifiers()) return currentSpecifiers();
    Specifiers rows{platform::PSSpecifier::groupSpecifierWithName("Rows")};
    rows.front()->setProperty_forKey(platform::Value("That is all."), platform::PSPropertyKey::footerText);
    for (std::size_t i = 0; i < _count; ++i) {
        rows.push_back(platform::PSSpecifier::preferenceSpecifierNamed_target_set_get_detail_cell_edit(
            "Row " + std::to_string(i), this, nullptr, nullptr, "", platform::PSCellType::listItem, ""));
    }
    setSpecifiers(std::move(rows));
    return currentSpecifiers();
}

std::shared_ptr<platform::UITableViewCell> LongPage::tableView_cellForRowAtIndexPath(platform::UITableView& table,
                                                                                     platform::NSIndexPath path) {
    ++_produced;
    return PSListController::tableView_cellForRowAtIndexPath(table, path);
}

LongScreen::LongScreen(std::size_t count, hosts::terminal::TextStyle style)
    : host(ScreenText(style), [](const auto&) { return nullptr; }),
      navigation(host),
      page(std::make_shared<LongPage>(platform.services(), count)) {
    navigation.pushViewController_animated(page, false);
}

std::vector<std::string> LongScreen::compose(std::size_t width, std::size_t height) {
    std::vector<std::string> texts;
    for (const Line& line : view().compose({width, height})) {
        std::string text = line.text();
        text.erase(text.find_last_not_of(' ') + 1);
        texts.push_back(std::move(text));
    }
    return texts;
}

std::string LongScreen::cursorLine(std::size_t width, std::size_t height) {
    for (const Line& line : view().compose({width, height})) {
        if (line.selected) return line.text();
    }
    return {};
}

}  // namespace terminal_screen_test
