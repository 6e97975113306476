// SPDX-License-Identifier: MIT
#include "rows.h"

#include <utility>

namespace list_test {

using platform::PSCellType;
using platform::PSSpecifier;

Row group(std::string title, std::string footer) {
    auto row = PSSpecifier::groupSpecifierWithName(std::move(title));
    if (!footer.empty()) row->setProperty_forKey(platform::Value(std::move(footer)), "footerText");
    return row;
}

Row item(std::string label) {
    return PSSpecifier::preferenceSpecifierNamed_target_set_get_detail_cell_edit(std::move(label), nullptr, nullptr,
                                                                                 nullptr, {}, PSCellType::listItem, {});
}

Row link(std::string label, std::string pageClass) {
    return PSSpecifier::preferenceSpecifierNamed_target_set_get_detail_cell_edit(
        std::move(label), nullptr, nullptr, nullptr, std::move(pageClass), PSCellType::link, {});
}

Row toggle(std::string label, PSSpecifier::Getter getter, PSSpecifier::Setter setter) {
    return PSSpecifier::preferenceSpecifierNamed_target_set_get_detail_cell_edit(
        std::move(label), nullptr, std::move(setter), std::move(getter), {}, PSCellType::switchCell, {});
}

Row withAction(Row row, PSSpecifier::Action action) {
    row->action = std::move(action);
    return row;
}

Row greyed(Row row) {
    row->setProperty_forKey(platform::Value(false), "enabled");
    return row;
}

ShownRows::ShownRows(Rows rows) {
    classes.add({"RowPage", [rows = std::move(rows)](platform::Platform& owner) {
                     return std::make_shared<RowPage>(owner, rows);
                 }});
    screen.open("RowPage");
    log.take();
}

std::vector<std::string> labelsOf(const Rows& rows) {
    std::vector<std::string> labels;
    for (const Row& row : rows)
        labels.push_back(row->name());
    return labels;
}

}  // namespace list_test
