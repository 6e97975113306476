// SPDX-License-Identifier: MIT
#include "support/profile_cell.h"

#include <utility>

#include "resources/bundle_image.h"
#include "support/pixel_aligned_rect.h"

namespace trivel3 {
namespace {

using platform::CGRect;
using platform::UIColor;
using platform::UIFont;

constexpr CGRect avatarFrame = {9, 18, 60, 60};

// It reaches over the content's right edge, into the accessory's area.
constexpr double badgeInset = 14;
constexpr double badgeWidth = 19;
constexpr double badgeHeight = 15;

constexpr double textLeft = 79;
constexpr double nameTop = 18;
constexpr double nameHeight = 22;
constexpr double infoTop = 37.5;
constexpr double infoHeight = 55;

constexpr double nameFontSize = 18;
constexpr double handleFontSize = 16;
constexpr double infoFontSize = 14;
constexpr double infoAlpha = 0.5;
constexpr int infoLines = 3;

platform::NSAttributedString nameAndHandle(std::string_view name, std::string_view handle) {
    const UIFont handleFont = UIFont::systemFontOfSize(handleFontSize);
    return {{std::string(name), UIFont::boldSystemFontOfSize(nameFontSize)},
            {" ", handleFont},
            {std::string(handle), handleFont}};
}

}  // namespace

KavixPreferencesProfileCell::KavixPreferencesProfileCell(platform::Platform& platform, platform::UITableViewCellStyle,
                                                         std::string reuseIdentifier)
    : UITableViewCell(platform::UITableViewCellStyle::subtitle, std::move(reuseIdentifier)),
      _platform(platform),
      _avatarView(std::make_shared<platform::UIImageView>()),
      _twitterView(std::make_shared<platform::UIImageView>()),
      _nameLabel(std::make_shared<platform::UILabel>()),
      _infoLabel(std::make_shared<platform::UILabel>()) {
    setUpViews();
}

void KavixPreferencesProfileCell::setUpViews() {
    _avatarView->setCornerRadius(avatarFrame.width / 2);
    _avatarView->setClipsToBounds(true);
    _twitterView->image = bundleImage(_platform, "Twitter");
    _nameLabel->textColor = UIColor::blackColor();
    _infoLabel->font = UIFont::systemFontOfSize(infoFontSize);
    _infoLabel->textColor = UIColor::blackColor().colorWithAlphaComponent(infoAlpha);
    _infoLabel->numberOfLines = infoLines;
    _infoLabel->lineBreakMode = platform::NSLineBreakMode::byWordWrapping;

    contentView()->addSubview(_avatarView);
    contentView()->addSubview(_twitterView);
    contentView()->addSubview(_nameLabel);
    contentView()->addSubview(_infoLabel);
}

void KavixPreferencesProfileCell::layoutSubviews() {
    UITableViewCell::layoutSubviews();
    const platform::CGSize content = contentView()->bounds().size();
    const auto place = [this](platform::UIView& view, const CGRect& frame) {
        view.setFrame(PixelAlignedRect(frame, _platform.screen));
    };
    place(*_avatarView, avatarFrame);
    place(*_twitterView, {content.width - badgeInset, (content.height - badgeHeight) * 0.5, badgeWidth, badgeHeight});
    const double textWidth = _twitterView->frame().x - textLeft;
    place(*_nameLabel, {textLeft, nameTop, textWidth, nameHeight});
    place(*_infoLabel, {textLeft, infoTop, textWidth, infoHeight});
}

std::vector<std::shared_ptr<platform::UIView>> KavixPreferencesProfileCell::accessibilityElements() const {
    if (!_nameLabel->text() && !_infoLabel->text()) return {};
    return {_avatarView, _nameLabel, _infoLabel};
}

void KavixPreferencesProfileCell::loadImage_nameText_handleText_infoText(std::optional<std::string_view> imageName,
                                                                         std::optional<std::string_view> name,
                                                                         std::optional<std::string_view> handle,
                                                                         std::optional<std::string_view> info) {
    _avatarView->image = imageName ? bundleImage(_platform, *imageName) : nullptr;
    if (name && handle) {
        _nameLabel->setAttributedText(nameAndHandle(*name, *handle));
    } else {
        _nameLabel->setText(std::nullopt);
    }
    _infoLabel->setText(info ? std::optional<std::string>(*info) : std::nullopt);
}

}  // namespace trivel3
