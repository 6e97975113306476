// SPDX-License-Identifier: MIT
// A bundle that the advanced options page loads for its links.
#include <string_view>

#include "platform/list/list_controller.h"
#include "platform/services/platform.h"

namespace {

constexpr std::string_view bundleName = TRIVEL3_TEST_BUNDLE;

class SiblingPage final : public platform::PSListController {
public:
    using PSListController::PSListController;
    const char* className() const override { return "OstrelPrefsController"; }

    const Specifiers& specifiers() override {
        if (!hasSpecifiers()) {
            setSpecifiers({platform::PSSpecifier::emptyGroupSpecifier(),
                           platform::PSSpecifier::preferenceSpecifierNamed_target_set_get_detail_cell_edit(
                               "Sibling", this, nullptr, nullptr, {}, platform::PSCellType::link, {})});
        }
        return currentSpecifiers();
    }
};

/// Its name says which bundle it came from: a name that is taken keeps its first class.
class FirstLoaded final : public platform::PSListController {
public:
    using PSListController::PSListController;
    const char* className() const override { return TRIVEL3_TEST_BUNDLE; }
};

template <class T>
void add(platform::ClassRegistry& classes, const char* name) {
    classes.add({name, [](platform::Platform& platform) { return std::make_shared<T>(platform); }});
}

}  // namespace

extern "C" __attribute__((visibility("default"))) void trivel3RegisterClasses(platform::ClassRegistry& classes) {
    add<FirstLoaded>(classes, "FirstLoaded");
    if (bundleName == "OstrelSettings") add<SiblingPage>(classes, "OstrelPrefsController");
}
