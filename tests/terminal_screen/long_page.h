// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "hosts/terminal/screen/screen_host.h"
#include "platform/list/list_controller.h"
#include "platform/ui/navigation_controller.h"
#include "tests/kit/test_platform.h"

namespace terminal_screen_test {

/// A page of one group with a title and a footer, whose rows are items named "Row 0", "Row 1" and so
/// on. It counts the cells that it is asked for.
class LongPage final : public platform::PSListController {
public:
    LongPage(platform::Platform& platform, std::size_t count) : PSListController(platform), _count(count) {}

    const Specifiers& specifiers() override;
    std::shared_ptr<platform::UITableViewCell> tableView_cellForRowAtIndexPath(platform::UITableView& table,
                                                                               platform::NSIndexPath path) override;
    std::size_t takeProduced() { return std::exchange(_produced, 0); }

private:
    std::size_t _count;
    std::size_t _produced = 0;
};

/// Such a page on a screen without a terminal.
struct LongScreen {
    explicit LongScreen(std::size_t count, hosts::terminal::TextStyle style = {});

    hosts::terminal::screen::PageView& view() { return host.top(); }
    /// The lines' characters, without blanks at their ends.
    std::vector<std::string> compose(std::size_t width, std::size_t height);
    /// The text of the line that the cursor is on; empty when it is on none.
    std::string cursorLine(std::size_t width, std::size_t height);

    kit::TestPlatform platform;
    hosts::terminal::screen::ScreenHost host;
    platform::UINavigationController navigation;
    std::shared_ptr<LongPage> page;
};

}  // namespace terminal_screen_test
