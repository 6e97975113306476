// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/services/platform.h"
#include "platform/ui/image_view.h"
#include "platform/ui/label.h"
#include "platform/ui/table_view_cell.h"

namespace trivel3 {

/// A person: a round picture, name and handle on one line, a biography below, and the social
/// network's badge at the right. Without a person it is a plain row, badge and all, whose standard
/// text label and image view are free for the page to use.
class KavixPreferencesProfileCell final : public platform::UITableViewCell {
public:
    static constexpr const char* usualReuseIdentifier = "KavixPreferencesProfileCell";

    /// Of the subtitle style, whatever style is asked for. The platform outlives the cell.
    KavixPreferencesProfileCell(platform::Platform& platform, platform::UITableViewCellStyle style,
                                std::string reuseIdentifier);
    const char* className() const override { return "KavixPreferencesProfileCell"; }

    void layoutSubviews() override;

    /// The person's parts, where it shows one: what a page has left in the standard parts lies beneath them.
    std::vector<std::shared_ptr<platform::UIView>> accessibilityElements() const override;

    /// Shows a person, or clears what is not given; nothing of what was shown before is left. The
    /// image is one of the pane's bundle, by name. Name and handle show together or not at all.
    void loadImage_nameText_handleText_infoText(std::optional<std::string_view> imageName,
                                                std::optional<std::string_view> name,
                                                std::optional<std::string_view> handle,
                                                std::optional<std::string_view> info);

    const std::shared_ptr<platform::UIImageView>& avatarView() const { return _avatarView; }
    const std::shared_ptr<platform::UIImageView>& twitterView() const { return _twitterView; }
    const std::shared_ptr<platform::UILabel>& nameLabel() const { return _nameLabel; }
    const std::shared_ptr<platform::UILabel>& infoLabel() const { return _infoLabel; }

private:
    void setUpViews();

    platform::Platform& _platform;
    std::shared_ptr<platform::UIImageView> _avatarView;
    std::shared_ptr<platform::UIImageView> _twitterView;
    std::shared_ptr<platform::UILabel> _nameLabel;
    std::shared_ptr<platform::UILabel> _infoLabel;
};

}  // namespace trivel3
