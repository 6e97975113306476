// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "pages/preferences_page_controller.h"

namespace trivel3 {

/// The lifecycle of the pages that keep a master array of rows: every row that the page can ever
/// show is built once, in the table's order; what is shown is a copy, which `updateSpecifiers` trims
/// and fits to the settings. Rows are shared between the two, so a property set on a master row shows.
///
/// Choice rows are list items whose user info names a setting and the integer that the row stands
/// for. Nothing is kept between calls: each cell, each tap and each update reads the settings file
/// anew, since the add-on and other pages write it too.
class KavixPreferencesListController : public KavixPreferencesPageController {
public:
    using KavixPreferencesPageController::KavixPreferencesPageController;

    const Specifiers& specifiers() override;
    void viewWillAppear(bool animated) override;
    void reloadSpecifiers() override;

    /// Settles what the page's rows look like, in this order: the facts are read, the page repairs,
    /// rows are greyed or made usable, blocks come and go, footers change. Only what differs from what
    /// the rows hold is changed, with the given flag on every change of the table. Rows that have not
    /// been built stay so, but the repairs are made.
    virtual void updateSpecifiers(bool animated);

    std::shared_ptr<platform::UITableViewCell> tableView_cellForRowAtIndexPath(platform::UITableView& table,
                                                                               platform::NSIndexPath path) override;
    void tableView_didSelectRowAtIndexPath(platform::UITableView& table, platform::NSIndexPath path) override;

protected:
    virtual const PageTable& pageTable() const = 0;
    /// What the table's rules are about, from the settings as they are now.
    virtual Facts readFacts() const { return 0; }
    /// Settings that contradict one another; each repair is a write of the store.
    virtual void repair(Facts) {}
    /// Every row of the table. Called once.
    virtual Specifiers buildSpecifiers() { return makeRows(pageTable().rows); }

private:
    struct ChoiceAt {
        ChoiceMode mode;
        AfterChoice after;
        /// Nothing for a row without a key, whose setting reads as 0.
        std::optional<std::string> key;
        std::int64_t value;
    };

    void settleEnabled(const std::shared_ptr<platform::PSSpecifier>& row, bool enabled, bool animated);
    void settlePresence(const Presence& presence, bool shown, bool animated);
    void settleFooter(const std::shared_ptr<platform::PSSpecifier>& group, std::string_view text, bool animated);

    /// Nothing for a row that is no choice.
    std::optional<ChoiceAt> choiceAtIndexPath(platform::NSIndexPath path) const;
    std::int64_t currentValue(const ChoiceAt& choice) const;

    Specifiers _kavixSpecifiers;
};

}  // namespace trivel3
