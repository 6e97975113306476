// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/list/list_controller.h"
#include "platform/list/table_host.h"
#include "platform/services/platform.h"
#include "platform/ui/navigation_controller.h"
#include "tests/kit/event.h"

namespace kit {

/// A row by its place. Section and row count from 0, group rows not counted.
using platform::NSIndexPath;

/// What a user sees and does: a stack of pages and the table of the one on top. It draws nothing of
/// its own accord: a cell is produced when a test asks for it, and is kept by nobody but the test.
///
/// Rows are named by label, which must be that of just one row on the page, or by place. A row that
/// is not there, or a page that is no list page, is an std::logic_error that says what was wanted.
class Screen final : public platform::NavigationHost, public platform::TableHost {
public:
    Screen(platform::Platform& platform, EventLog& log) : _platform(platform), _log(log) {}

    /// Makes a page by class name and puts it on top, which loads it and lets it appear.
    platform::PSListController& open(std::string_view className);
    /// The list page on top.
    platform::PSListController& page() const;
    template <class T>
    T& pageAs() const {
        return dynamic_cast<T&>(page());
    }
    /// Any page on top; null for none.
    const std::shared_ptr<platform::UIViewController>& top() const { return _navigation.topViewController(); }
    /// The composer on top; null when nothing is presented or there was none to present.
    std::shared_ptr<platform::UIViewController> presented() const;

    /// Touches a row, as a finger would.
    void tap(std::string_view label);
    void tap(NSIndexPath path);
    /// Moves a row's switch; false when the row is greyed or has none.
    bool moveSwitch(std::string_view label, bool on);
    /// False when the page is the only one.
    bool back() { return _navigation.popViewControllerAnimated(true); }
    /// The page on top appears again, as after a return from elsewhere.
    void appear() { top()->viewWillAppear(true); }

    /// The rows' labels as they are now, from the top, group rows left out.
    std::vector<std::string> labels() const;
    std::vector<std::string> labels(std::size_t section) const;
    /// Those of the rows whose cell, produced now, is greyed, checked or switched on.
    std::vector<std::string> greyedLabels() const;
    std::vector<std::string> checkedLabels() const;
    std::vector<std::string> checkedLabels(std::size_t section) const;
    std::vector<std::string> onLabels() const;
    bool isGreyed(std::string_view label) const { return !cell(label)->isCellEnabled(); }
    bool isChecked(std::string_view label) const { return cell(label)->isChecked(); }
    bool isOn(std::string_view label) const { return cell(label)->isOn(); }

    /// Of each section in order; nothing where a section has none.
    std::vector<std::optional<std::string>> headers() const;
    std::vector<std::optional<std::string>> footers() const;

    std::shared_ptr<platform::PSSpecifier> row(std::string_view label) const;
    NSIndexPath pathOf(std::string_view label) const;
    /// Produces the row's cell.
    std::shared_ptr<platform::PSTableCell> cell(std::string_view label) const { return cell(pathOf(label)); }
    std::shared_ptr<platform::PSTableCell> cell(NSIndexPath path) const;

    void didPush(platform::UIViewController& page, bool animated) override;
    void didPop(platform::UIViewController& page, platform::UIViewController& gone, bool animated) override;
    void didPresent(const std::shared_ptr<platform::UIViewController>& presented, bool animated) override;
    void didDismiss(bool animated) override;

    void reloadTable(platform::PSListController& page) override;
    void reloadRow(platform::PSListController& page, std::size_t position, bool animated) override;
    void insertRows(platform::PSListController& page, std::size_t position, Rows rows, bool animated) override;
    void removeRows(platform::PSListController& page, std::size_t position, Rows rows, bool animated) override;

private:
    std::vector<NSIndexPath> paths() const;
    std::vector<NSIndexPath> paths(std::size_t section) const;
    std::vector<std::string> checkedLabels(const std::vector<NSIndexPath>& paths) const;
    std::string labelAt(NSIndexPath path) const;

    platform::Platform& _platform;
    EventLog& _log;
    platform::UINavigationController _navigation{*this};
};

}  // namespace kit
