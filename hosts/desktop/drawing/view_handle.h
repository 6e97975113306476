// SPDX-License-Identifier: MIT
#pragma once

#include <QMetaType>
#include <memory>

#include "platform/ui/image.h"
#include "platform/ui/view.h"

namespace hosts::desktop {

/// A view tree on its way through QML to the item that draws it. `revision` tells a tree that has
/// changed from the same tree before.
struct ViewHandle {
    std::shared_ptr<const platform::UIView> view;
    int revision = 0;
    bool operator==(const ViewHandle&) const = default;
};

/// A picture on its way through QML to the item that draws it.
struct ImageHandle {
    std::shared_ptr<const platform::UIImage> image;
    bool operator==(const ImageHandle&) const = default;
};

}  // namespace hosts::desktop

Q_DECLARE_METATYPE(hosts::desktop::ViewHandle)
Q_DECLARE_METATYPE(hosts::desktop::ImageHandle)
