// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "platform/foundation/export.h"
#include "platform/ui/view.h"

namespace platform {

class TRIVEL3_PLATFORM_EXPORT UIBarButtonItem {
public:
    static std::shared_ptr<UIBarButtonItem> initWithCustomView(std::shared_ptr<UIView> view) {
        auto item = std::make_shared<UIBarButtonItem>();
        item->_customView = std::move(view);
        return item;
    }
    const std::shared_ptr<UIView>& customView() const { return _customView; }

private:
    std::shared_ptr<UIView> _customView;
};

/// What a page puts into the navigation bar.
class TRIVEL3_PLATFORM_EXPORT UINavigationItem {
public:
    /// Stands in place of the title; null shows the title.
    const std::shared_ptr<UIView>& titleView() const { return _titleView; }
    void setTitleView(std::shared_ptr<UIView> view) { _titleView = std::move(view); }

    const std::shared_ptr<UIBarButtonItem>& rightBarButtonItem() const { return _rightBarButtonItem; }
    void setRightBarButtonItem(std::shared_ptr<UIBarButtonItem> item) { _rightBarButtonItem = std::move(item); }

private:
    std::shared_ptr<UIView> _titleView;
    std::shared_ptr<UIBarButtonItem> _rightBarButtonItem;
};

}  // namespace platform
