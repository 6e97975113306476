// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "platform/foundation/export.h"
#include "platform/ui/image_view.h"
#include "platform/ui/label.h"
#include "platform/ui/view.h"

namespace platform {

enum class UITableViewCellStyle { standard = 0, value1 = 1, value2 = 2, subtitle = 3 };
enum class UITableViewCellAccessoryType { none = 0, disclosureIndicator = 1, checkmark = 3 };

/// A table's cell: a content view that holds the standard image and labels, and the accessory area
/// to its right.
class TRIVEL3_PLATFORM_EXPORT UITableViewCell : public UIView {
public:
    /// Between the cell's edges and what stands in it, in points.
    static constexpr double margin = 15;

    UITableViewCell(UITableViewCellStyle style, std::string reuseIdentifier);
    const char* className() const override { return "UITableViewCell"; }

    UITableViewCellStyle style() const { return _style; }
    const std::string& reuseIdentifier() const { return _reuseIdentifier; }

    /// The view that cells of one's own add their parts to. It ends where the accessory begins.
    const std::shared_ptr<UIView>& contentView() const { return _contentView; }
    const std::shared_ptr<UIImageView>& imageView() const { return _imageView; }
    const std::shared_ptr<UILabel>& textLabel() const { return _textLabel; }
    /// Null in the standard style.
    const std::shared_ptr<UILabel>& detailTextLabel() const { return _detailTextLabel; }

    UITableViewCellAccessoryType accessoryType = UITableViewCellAccessoryType::none;

    void layoutSubviews() override;

    /// How much of the cell's width the accessory takes, in points.
    virtual double accessoryWidth() const;

private:
    void layoutLabels();

    UITableViewCellStyle _style;
    std::string _reuseIdentifier;
    std::shared_ptr<UIView> _contentView;
    std::shared_ptr<UIImageView> _imageView;
    std::shared_ptr<UILabel> _textLabel;
    std::shared_ptr<UILabel> _detailTextLabel;
};

}  // namespace platform
