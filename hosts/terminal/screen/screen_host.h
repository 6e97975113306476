// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "hosts/terminal/render/screen_text.h"
#include "hosts/terminal/screen/page_view.h"
#include "hosts/terminal/screen/sheet.h"
#include "platform/list/table_host.h"
#include "platform/ui/navigation_controller.h"

namespace hosts::terminal::screen {

/// What the pages have put on the screen: a view of each page on the stack, and a sheet for what is
/// presented over them. A terminal shows each change at once, animated or not.
class ScreenHost final : public platform::NavigationHost, public platform::TableHost {
public:
    /// Gives the sheet for what is presented; null for what cannot be shown.
    using MakeSheet = std::function<std::shared_ptr<Sheet>(const std::shared_ptr<platform::UIViewController>&)>;

    ScreenHost(const ScreenText& text, MakeSheet makeSheet) : _text(text), _makeSheet(std::move(makeSheet)) {}

    /// By which the rows of pages that are pushed from here on say that they are changed; they outlive the host.
    void useDefaults(const Defaults* defaults) { _defaults = defaults; }

    /// The page on top. There is one from the first push on.
    PageView& top() const { return *_views.back(); }
    /// The titles of the pages above the first.
    std::vector<std::string> titles() const;
    /// The page below the top one; null when there is none.
    PageView* below() const { return _views.size() > 1 ? _views[_views.size() - 2].get() : nullptr; }
    /// What is presented over the pages; null when nothing is.
    std::shared_ptr<Sheet> sheet() const { return _sheets.empty() ? nullptr : _sheets.back(); }

    void didPush(platform::UIViewController& page, bool animated) override;
    void didPop(platform::UIViewController& page, platform::UIViewController& gone, bool animated) override;
    void didPresent(const std::shared_ptr<platform::UIViewController>& presented, bool animated) override;
    void didDismiss(bool animated) override;

    void reloadTable(platform::PSListController& page) override;
    void reloadRow(platform::PSListController& page, std::size_t position, bool animated) override;
    void insertRows(platform::PSListController& page, std::size_t position, Rows rows, bool animated) override;
    void removeRows(platform::PSListController& page, std::size_t position, Rows rows, bool animated) override;

private:
    PageView* viewOf(const platform::UIViewController& page) const;
    void noteRowsMoved(const platform::UIViewController& page) const;

    ScreenText _text;
    MakeSheet _makeSheet;
    const Defaults* _defaults = nullptr;
    std::vector<std::unique_ptr<PageView>> _views;
    std::vector<std::shared_ptr<Sheet>> _sheets;
};

}  // namespace hosts::terminal::screen
