// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "pages/page_controller.h"

namespace trivel3 {

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
    /// Every row of the page. Called once.
    virtual Specifiers buildSpecifiers() = 0;
    /// From this section on all rows are applications.
    virtual std::size_t firstApplicationSection() const = 0;
    virtual bool isTicked(const std::string& identifier) = 0;
    /// Stores the tick and tells the add-on, whether or not that worked.
    virtual void setTicked(bool ticked, const std::string& identifier) = 0;

private:
    Specifiers _rowsOverReload;
};

}  // namespace trivel3
