// SPDX-License-Identifier: MIT
#include "hosts/session/row_finder.h"

#include "hosts/session/page_snapshot.h"
#include "platform/list/list_controller.h"

namespace hosts {
namespace {

std::vector<RowPlace> listRowPlaces(platform::PSListController& page) {
    std::vector<RowPlace> places;
    const auto& rows = page.specifiers();
    for (std::size_t position = 0; position < rows.size(); ++position) {
        if (auto path = page.indexPathForIndex(position)) places.push_back({rows[position]->name(), *path});
    }
    return places;
}

}  // namespace

std::vector<RowPlace> rowPlaces(platform::UIViewController& page) {
    if (auto* list = dynamic_cast<platform::PSListController*>(&page)) return listRowPlaces(*list);
    std::vector<RowPlace> places;
    for (const SectionSnapshot& section : PageSnapshot::of(page).sections) {
        for (const RowSnapshot& row : section.rows)
            places.push_back({row.label, row.path});
    }
    return places;
}

std::vector<platform::NSIndexPath> rowsLabelled(platform::UIViewController& page, std::string_view label) {
    std::vector<platform::NSIndexPath> found;
    for (const RowPlace& place : rowPlaces(page)) {
        if (place.label == label) found.push_back(place.path);
    }
    return found;
}

}  // namespace hosts
