// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <vector>

#include "platform/foundation/export.h"
#include "platform/foundation/object.h"
#include "platform/ui/geometry.h"

namespace platform {

/// Which margins and sizes of a view take up a change of its superview's size; bits may be combined.
enum UIViewAutoresizing : unsigned {
    UIViewAutoresizingNone = 0,
    UIViewAutoresizingFlexibleLeftMargin = 1,
    UIViewAutoresizingFlexibleWidth = 2,
    UIViewAutoresizingFlexibleRightMargin = 4,
    UIViewAutoresizingFlexibleTopMargin = 8,
    UIViewAutoresizingFlexibleHeight = 16,
    UIViewAutoresizingFlexibleBottomMargin = 32,
};

/// A node of the view tree. Views are data: they say what is where, and a host draws them.
class TRIVEL3_PLATFORM_EXPORT UIView : public Object {
public:
    explicit UIView(CGRect frame = {}) : _frame(frame) {}
    UIView(const UIView&) = delete;
    UIView& operator=(const UIView&) = delete;

    /// The platform's name of the class, for those who inspect a tree.
    virtual const char* className() const { return "UIView"; }

    /// In the superview's coordinates.
    const CGRect& frame() const { return _frame; }
    /// Gives subviews with flexible margins or sizes their share of a change of size. An override
    /// calls its base first.
    virtual void setFrame(CGRect frame);
    CGRect bounds() const { return {0, 0, _frame.width, _frame.height}; }

    unsigned autoresizingMask() const { return _autoresizingMask; }
    void setAutoresizingMask(unsigned mask) { _autoresizingMask = mask; }

    /// Drawn in this order, the last on top.
    const std::vector<std::shared_ptr<UIView>>& subviews() const { return _subviews; }
    void addSubview(std::shared_ptr<UIView> view) { _subviews.push_back(std::move(view)); }

    double cornerRadius() const { return _cornerRadius; }
    void setCornerRadius(double radius) { _cornerRadius = radius; }
    bool clipsToBounds() const { return _clipsToBounds; }
    void setClipsToBounds(bool clips) { _clipsToBounds = clips; }

    /// The views in this one that tell what it is about, in the order in which they do. Empty where all that is drawn
    /// does, as it is for most views.
    virtual std::vector<std::shared_ptr<UIView>> accessibilityElements() const { return {}; }

    /// Gives the subviews their frames. An override calls its base first.
    virtual void layoutSubviews() {}

private:
    CGRect _frame;
    unsigned _autoresizingMask = UIViewAutoresizingNone;
    std::vector<std::shared_ptr<UIView>> _subviews;
    double _cornerRadius = 0;
    bool _clipsToBounds = false;
};

}  // namespace platform
