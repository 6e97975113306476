// SPDX-License-Identifier: MIT
#include "platform/ui/view.h"

namespace platform {
namespace {

// One axis of a view in its superview: the margin before it, its size, the margin after it.
struct Span {
    double before;
    double size;
    double after;
};

// Splits a change of the superview's size among the flexible parts, in proportion to what they
// measure; parts that measure nothing share it evenly.
Span resized(Span span, double change, bool flexibleBefore, bool flexibleSize, bool flexibleAfter) {
    const int parts = flexibleBefore + flexibleSize + flexibleAfter;
    if (parts == 0) return {span.before, span.size, span.after + change};
    const double total =
        (flexibleBefore ? span.before : 0) + (flexibleSize ? span.size : 0) + (flexibleAfter ? span.after : 0);
    auto grown = [&](double part, bool flexible) {
        if (!flexible) return part;
        return part + (total > 0 ? change * part / total : change / parts);
    };
    return {grown(span.before, flexibleBefore), grown(span.size, flexibleSize), grown(span.after, flexibleAfter)};
}

CGRect resized(const CGRect& frame, unsigned mask, CGSize before, CGSize after) {
    Span x = resized({frame.x, frame.width, before.width - frame.x - frame.width}, after.width - before.width,
                     mask & UIViewAutoresizingFlexibleLeftMargin, mask & UIViewAutoresizingFlexibleWidth,
                     mask & UIViewAutoresizingFlexibleRightMargin);
    Span y = resized({frame.y, frame.height, before.height - frame.y - frame.height}, after.height - before.height,
                     mask & UIViewAutoresizingFlexibleTopMargin, mask & UIViewAutoresizingFlexibleHeight,
                     mask & UIViewAutoresizingFlexibleBottomMargin);
    return {x.before, y.before, x.size, y.size};
}

}  // namespace

void UIView::setFrame(CGRect frame) {
    const CGSize before = _frame.size();
    _frame = frame;
    if (before == frame.size()) return;
    for (const auto& view : _subviews) {
        if (view->_autoresizingMask != UIViewAutoresizingNone) {
            view->setFrame(resized(view->_frame, view->_autoresizingMask, before, frame.size()));
        }
    }
}

}  // namespace platform
