// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "pages/preferences_page_controller.h"

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

/// A page on which installed applications are ticked, each independently of the others. A page says
/// what its rows are and where its ticks live; they are read anew for each cell, since the add-on
/// keeps the files too.
///
/// The rows are built once and kept as the framework's row array for as long as the page lives: a
/// reload draws them again, with the icons that they have, and looks for no other applications.
class KavixPreferencesApplicationPageController : public KavixPreferencesPageController {
public:
    using KavixPreferencesPageController::KavixPreferencesPageController;

    const Specifiers& specifiers() override;
    void reloadSpecifiers() override;

    /// Shows an application's tick as it is stored, and its icon.
    std::shared_ptr<platform::UITableViewCell> tableView_cellForRowAtIndexPath(platform::UITableView& table,
                                                                               platform::NSIndexPath path) override;
    /// Flips an application's checkmark and stores what the cell then shows.
    void tableView_didSelectRowAtIndexPath(platform::UITableView& table, platform::NSIndexPath path) override;

protected:
    /// The sections ahead of the applications.
    virtual std::span<const Row> ownRows() const { return {}; }
    /// The title of the first group of applications; empty for none.
    virtual std::string_view applicationsTitle() const { return {}; }
    virtual bool isTicked(const std::string& identifier) = 0;
    /// Stores the tick and tells the add-on, whether or not that worked.
    virtual void setTicked(bool ticked, const std::string& identifier) = 0;

private:
    Specifiers buildSpecifiers();
    bool isApplication(platform::NSIndexPath path) const;

    Specifiers _rowsOverReload;
};

}  // namespace trivel3
