// SPDX-License-Identifier: MIT
#pragma once

#include "platform/list/page_controller.h"
#include "platform/ui/table_view.h"

namespace trivel3 {

/// The people behind the product: a row for each creator and one for the maker. A tap opens the
/// profile on the social network. It is no list of settings: it fills a table of its own.
class KavixPreferencesProfileController final : public platform::PSViewController,
                                                public platform::UITableViewDataSource,
                                                public platform::UITableViewDelegate {
public:
    using PSViewController::PSViewController;
    static constexpr const char* registeredName = "KavixPreferencesProfileController";
    const char* className() const override { return registeredName; }

    std::size_t numberOfSectionsInTableView(platform::UITableView& table) override;
    std::size_t tableView_numberOfRowsInSection(platform::UITableView& table, std::size_t section) override;
    std::shared_ptr<platform::UITableViewCell> tableView_cellForRowAtIndexPath(platform::UITableView& table,
                                                                               platform::NSIndexPath path) override;
    double tableView_heightForRowAtIndexPath(platform::UITableView& table, platform::NSIndexPath path) override;
    double tableView_estimatedHeightForRowAtIndexPath(platform::UITableView& table,
                                                      platform::NSIndexPath path) override;
    /// Opens the profile with the first of these that is there: the independent client, the
    /// network's own application, the web.
    void tableView_didSelectRowAtIndexPath(platform::UITableView& table, platform::NSIndexPath path) override;

protected:
    void loadView() override;
};

}  // namespace trivel3
