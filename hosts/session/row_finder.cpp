// SPDX-License-Identifier: MIT
#include "hosts/session/row_finder.h"

#include "hosts/session/page_snapshot.h"
#include "platform/list/list_controller.h"

namespace hosts {
namespace {

std::vector<platform::NSIndexPath> listRowsLabelled(platform::PSListController& page, std::string_view label) {
    std::vector<platform::NSIndexPath> found;
    const auto& rows = page.specifiers();
    for (std::size_t position = 0; position < rows.size(); ++position) {
        if (rows[position]->name() != label) continue;
        if (auto path = page.indexPathForIndex(position)) found.push_back(*path);
    }
    return found;
}

}  // namespace

std::vector<platform::NSIndexPath> rowsLabelled(platform::UIViewController& page, std::string_view label) {
    if (auto* list = dynamic_cast<platform::PSListController*>(&page)) return listRowsLabelled(*list, label);
    std::vector<platform::NSIndexPath> found;
    for (const SectionSnapshot& section : PageSnapshot::of(page).sections) {
        for (const RowSnapshot& row : section.rows) {
            if (row.label == label) found.push_back(row.path);
        }
    }
    return found;
}

}  // namespace hosts
