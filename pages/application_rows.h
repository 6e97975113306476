// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "platform/list/list_controller.h"

namespace trivel3 {

/// Makes the rows of the installed applications for a page: the system's applications in one group,
/// the user's in another, each in the order of their bundle identifiers, without those that no user
/// ever runs. A row is named by the application's display name and identified by its bundle
/// identifier. Without an app-list service there are the two group rows and nothing else.
class ApplicationRowBuilder {
public:
    explicit ApplicationRowBuilder(platform::PSListController& page) : _page(page) {}

    /// Both group rows, each followed by its applications. The first group bears the title; empty for
    /// none. Makes no icons: see `fillApplicationIcon`.
    platform::PSListController::Specifiers build(std::string_view firstGroupTitle = {}) const;

private:
    platform::PSListController& _page;
};

/// Fetches the icon of the application whose row the cell shows, unless the row has it, and shows it.
/// An application without an icon is asked for again the next time.
void fillApplicationIcon(platform::Platform& platform, platform::PSTableCell& cell);

}  // namespace trivel3
