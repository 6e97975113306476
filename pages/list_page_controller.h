// SPDX-License-Identifier: MIT
#pragma once

#include "pages/page_controller.h"

namespace trivel3 {

/// The lifecycle of the pages that keep a master array of rows: every row that the page can ever
/// show is built once, in a fixed order; what is shown is a copy, which `updateSpecifiers` trims and
/// fits to the settings. Rows are shared between the two, so a property set on a master row shows.
class KavixPreferencesListController : public KavixPreferencesPageController {
public:
    using KavixPreferencesPageController::KavixPreferencesPageController;

    const Specifiers& specifiers() override;
    void viewWillAppear(bool animated) override;
    void reloadSpecifiers() override;

    /// Reads the settings that the page depends on and changes only what differs from what the rows
    /// hold, with the given flag on every change of the table. It finds rows by their position in the
    /// master array, and changes nothing when the rows have not been built.
    virtual void updateSpecifiers(bool animated) = 0;

protected:
    /// Every row of the page, in its fixed order. Called once.
    virtual Specifiers buildSpecifiers() = 0;

    /// The master array; empty until the rows are built.
    const Specifiers& masterSpecifiers() const { return _kavixSpecifiers; }

    /// Sets a group row's footer and redraws it, when it is not that text already.
    void setFooter(const std::shared_ptr<platform::PSSpecifier>& group, std::string_view text, bool animated);

    /// Greys a row or makes it usable, and redraws it. A row that has never been set either way is
    /// set even where that makes no difference.
    void setEnabled(const std::shared_ptr<platform::PSSpecifier>& row, bool enabled, bool animated);

    /// A run of rows of the master array.
    struct Block {
        std::size_t start;
        std::size_t length;
    };

    /// Inserts the block right after the row at `anchor` in the master array, or removes it, when it
    /// is not so already. A block counts as shown when its first row is.
    void setBlockShown(Block block, bool shown, std::size_t anchor, bool animated);
    /// Removes the block when it is shown.
    void removeBlock(Block block, bool animated);

private:
    Specifiers rowsOf(Block block) const;

    Specifiers _kavixSpecifiers;
};

}  // namespace trivel3
