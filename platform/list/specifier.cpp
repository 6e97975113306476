// SPDX-License-Identifier: MIT
#include "platform/list/specifier.h"

namespace platform {

std::shared_ptr<PSSpecifier> PSSpecifier::emptyGroupSpecifier() {
    return groupSpecifierWithName({});
}

std::shared_ptr<PSSpecifier> PSSpecifier::groupSpecifierWithName(std::string name) {
    return preferenceSpecifierNamed_target_set_get_detail_cell_edit(std::move(name), nullptr, nullptr, nullptr, {},
                                                                    PSCellType::group, {});
}

std::shared_ptr<PSSpecifier> PSSpecifier::preferenceSpecifierNamed_target_set_get_detail_cell_edit(
    std::string name, PSListController* target, Setter set, Getter get, std::string detail, PSCellType cell,
    std::string) {
    auto specifier = std::make_shared<PSSpecifier>();
    specifier->_name = std::move(name);
    specifier->_target = target;
    specifier->_setter = std::move(set);
    specifier->_getter = std::move(get);
    specifier->_detailControllerClass = std::move(detail);
    specifier->_cellType = cell;
    return specifier;
}

void PSSpecifier::setProperty_forKey(PSProperty property, std::string_view key) {
    auto* image = std::get_if<std::shared_ptr<const UIImage>>(&property);
    if (image && !*image) {
        if (auto found = _properties.find(key); found != _properties.end()) _properties.erase(found);
        return;
    }
    _properties.insert_or_assign(std::string(key), std::move(property));
}

const PSProperty* PSSpecifier::propertyForKey(std::string_view key) const {
    auto found = _properties.find(key);
    return found == _properties.end() ? nullptr : &found->second;
}

std::optional<std::string> PSSpecifier::textForKey(std::string_view key) const {
    const PSProperty* property = propertyForKey(key);
    const Value* value = property ? std::get_if<Value>(property) : nullptr;
    if (!value || !value->string()) return std::nullopt;
    return *value->string();
}

std::shared_ptr<const UIImage> PSSpecifier::iconImage() const {
    const PSProperty* property = propertyForKey(PSPropertyKey::iconImage);
    auto* image = property ? std::get_if<std::shared_ptr<const UIImage>>(property) : nullptr;
    return image ? *image : nullptr;
}

bool PSSpecifier::isEnabled() const {
    const PSProperty* property = propertyForKey(PSPropertyKey::enabled);
    const Value* value = property ? std::get_if<Value>(property) : nullptr;
    return !value || boolValue(*value);
}

}  // namespace platform
