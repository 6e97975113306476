// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "platform/foundation/export.h"
#include "platform/foundation/value.h"
#include "platform/ui/image.h"

namespace platform {

class PSListController;
class PSSpecifier;
class PSTableCell;

/// The platform's numbers of the kinds of cell.
enum class PSCellType { group = 0, link = 1, listItem = 3, switchCell = 6 };

/// A row's property: a value, or an image.
using PSProperty = std::variant<Value, std::shared_ptr<const UIImage>>;

/// The properties that the list framework itself, or its host, reads.
namespace PSPropertyKey {
inline constexpr std::string_view footerText = "footerText";
inline constexpr std::string_view iconImage = "iconImage";
inline constexpr std::string_view enabled = "enabled";
inline constexpr std::string_view label = "label";
/// There on a row that is checked and unchecked by itself, whatever its fellows are.
inline constexpr std::string_view isFlag = "isFlag";
}  // namespace PSPropertyKey

/// One row of a list page, or the group row that opens a section.
class TRIVEL3_PLATFORM_EXPORT PSSpecifier {
public:
    /// The target's methods, bound to it. The target outlives its rows' use.
    using Setter = std::function<void(const Value& value, PSSpecifier& specifier)>;
    using Getter = std::function<std::optional<Value>(PSSpecifier& specifier)>;
    using Action = std::function<void(PSSpecifier& specifier)>;

    static std::shared_ptr<PSSpecifier> emptyGroupSpecifier();
    static std::shared_ptr<PSSpecifier> groupSpecifierWithName(std::string name);
    /// `detail` and `edit` are class names; empty for none. Edit pages are the platform's own affair: no
    /// row of ours names one, and what is named is not kept.
    static std::shared_ptr<PSSpecifier> preferenceSpecifierNamed_target_set_get_detail_cell_edit(
        std::string name, PSListController* target, Setter set, Getter get, std::string detail, PSCellType cell,
        std::string edit);

    const std::string& name() const { return _name; }
    PSCellType cellType() const { return _cellType; }
    /// The page that the row belongs to; null for none.
    PSListController* target() const { return _target; }
    const Setter& setter() const { return _setter; }
    const Getter& getter() const { return _getter; }
    const std::string& detailControllerClass() const { return _detailControllerClass; }

    const std::optional<std::string>& identifier() const { return _identifier; }
    void setIdentifier(std::string identifier) { _identifier = std::move(identifier); }

    /// A null image removes the property.
    void setProperty_forKey(PSProperty property, std::string_view key);
    /// A null pointer when the row has no such property.
    const PSProperty* propertyForKey(std::string_view key) const;

    /// A property that is text, else nothing.
    std::optional<std::string> textForKey(std::string_view key) const;
    /// The "iconImage" property; null when there is none.
    std::shared_ptr<const UIImage> iconImage() const;
    /// False when the "enabled" property is there and false.
    bool isEnabled() const;

    const std::optional<Value>& userInfo() const { return _userInfo; }
    void setUserInfo(Value info) { _userInfo = std::move(info); }

    /// Run when the row is tapped, in place of following a link.
    Action action;

    /// The row's cell while somebody keeps it; null otherwise.
    std::shared_ptr<PSTableCell> cell() const { return _cell.lock(); }
    void setCell(const std::shared_ptr<PSTableCell>& cell) { _cell = cell; }

private:
    std::string _name;
    PSCellType _cellType = PSCellType::group;
    PSListController* _target = nullptr;
    Setter _setter;
    Getter _getter;
    std::string _detailControllerClass;
    std::optional<std::string> _identifier;
    std::map<std::string, PSProperty, std::less<>> _properties;
    std::optional<Value> _userInfo;
    std::weak_ptr<PSTableCell> _cell;
};

}  // namespace platform
