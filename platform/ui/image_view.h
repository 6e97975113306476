// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "platform/foundation/export.h"
#include "platform/ui/image.h"
#include "platform/ui/view.h"

namespace platform {

/// Shows an image, or nothing.
class TRIVEL3_PLATFORM_EXPORT UIImageView : public UIView {
public:
    using UIView::UIView;
    const char* className() const override { return "UIImageView"; }

    /// As large as the image; a null image makes an empty view.
    static std::shared_ptr<UIImageView> initWithImage(std::shared_ptr<const UIImage> image) {
        CGSize size = image ? image->size() : CGSize{};
        auto view = std::make_shared<UIImageView>(CGRect{0, 0, size.width, size.height});
        view->image = std::move(image);
        return view;
    }

    std::shared_ptr<const UIImage> image;
};

}  // namespace platform
