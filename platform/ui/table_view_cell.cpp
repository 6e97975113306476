// SPDX-License-Identifier: MIT
#include "platform/ui/table_view_cell.h"

namespace platform {
namespace {

// The platform's own measures, in points.
constexpr double disclosureWidth = 33;
constexpr double checkmarkWidth = 39;
constexpr double detailFontSize = 12;
constexpr double textLineHeight = 20.5;
constexpr double detailLineHeight = 14.5;

}  // namespace

UITableViewCell::UITableViewCell(UITableViewCellStyle style, std::string reuseIdentifier)
    : _style(style),
      _reuseIdentifier(std::move(reuseIdentifier)),
      _contentView(std::make_shared<UIView>()),
      _imageView(std::make_shared<UIImageView>()),
      _textLabel(std::make_shared<UILabel>()) {
    addSubview(_contentView);
    _contentView->addSubview(_imageView);
    _contentView->addSubview(_textLabel);
    if (_style == UITableViewCellStyle::standard) return;
    _detailTextLabel = std::make_shared<UILabel>();
    _detailTextLabel->font = UIFont::systemFontOfSize(detailFontSize);
    _contentView->addSubview(_detailTextLabel);
}

double UITableViewCell::accessoryWidth() const {
    switch (accessoryType) {
        case UITableViewCellAccessoryType::disclosureIndicator:
            return disclosureWidth;
        case UITableViewCellAccessoryType::checkmark:
            return checkmarkWidth;
        case UITableViewCellAccessoryType::none:
            break;
    }
    return 0;
}

void UITableViewCell::layoutSubviews() {
    UIView::layoutSubviews();
    _contentView->setFrame({0, 0, bounds().width - accessoryWidth(), bounds().height});
    const CGSize picture = _imageView->image ? _imageView->image->size() : CGSize{};
    _imageView->setFrame({margin, (bounds().height - picture.height) / 2, picture.width, picture.height});
    layoutLabels();
}

void UITableViewCell::layoutLabels() {
    const CGRect content = _contentView->bounds();
    const CGRect picture = _imageView->frame();
    const double left = picture.width > 0 ? picture.x + picture.width + margin : margin;
    const double width = content.width - left;
    const bool hasDetail = _detailTextLabel && _detailTextLabel->text();
    if (!hasDetail) {
        _textLabel->setFrame({left, 0, width, content.height});
        if (_detailTextLabel) _detailTextLabel->setFrame({});
        return;
    }
    const double top = (content.height - textLineHeight - detailLineHeight) / 2;
    _textLabel->setFrame({left, top, width, textLineHeight});
    _detailTextLabel->setFrame({left, top + textLineHeight, width, detailLineHeight});
}

}  // namespace platform
