// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "pages/list_page_controller.h"

namespace trivel3 {

/// How the value of a choice row stands to that of its setting.
enum class ChoiceMode {
    /// Checked when the setting has the row's value; a tap stores it.
    singleValue,
    /// Checked when the setting has the row's bit; a tap toggles that bit.
    flagSet,
    /// A flag set with a row of value 0 besides: that one is checked when no bit at all is set.
    flagSetWithNone,
};

/// What follows a tap that has changed the setting, besides the redraw of the row's section.
enum class AfterChoice { nothing, updateSpecifiers };

/// How a page treats the choice rows of a setting.
struct ChoiceRule {
    /// The settings key; nothing for every row of the page, whatever its user info holds.
    std::optional<std::string_view> key;
    ChoiceMode mode;
    AfterChoice after;
};

/// Whether a row that stands for `value` is checked while the setting is `current`.
bool isChoiceChecked(ChoiceMode mode, std::int64_t current, std::int64_t value);

/// The setting after a tap on such a row.
std::int64_t settingAfterChoice(ChoiceMode mode, std::int64_t current, std::int64_t value);

/// A page with choice rows: list items whose user info names a setting and the integer that the row
/// stands for. Nothing is kept between calls: each cell and each tap reads the settings file anew,
/// since the add-on and other pages write it too.
class KavixPreferencesChoiceController : public KavixPreferencesListController {
public:
    using KavixPreferencesListController::KavixPreferencesListController;

    std::shared_ptr<platform::UITableViewCell> tableView_cellForRowAtIndexPath(platform::UITableView& table,
                                                                               platform::NSIndexPath path) override;
    void tableView_didSelectRowAtIndexPath(platform::UITableView& table, platform::NSIndexPath path) override;

protected:
    /// The first rule that fits a row is the row's; rows that none fits are left as the framework has
    /// them.
    virtual std::span<const ChoiceRule> choiceRules() const = 0;

private:
    struct Choice {
        const ChoiceRule& rule;
        /// Nothing for a row without a key, whose setting reads as 0.
        std::optional<std::string> key;
        std::int64_t value;
    };

    std::optional<Choice> choiceAtIndexPath(platform::NSIndexPath path) const;
    std::int64_t currentValue(const Choice& choice) const;
};

}  // namespace trivel3
