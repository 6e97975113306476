// SPDX-License-Identifier: MIT
// A module as it should be.
#include "platform/list/list_controller.h"
#include "platform/services/platform.h"

namespace {

class PlainPage final : public platform::PSListController {
public:
    using PSListController::PSListController;
    const char* className() const override { return "PlainPage"; }
};

}  // namespace

extern "C" __attribute__((visibility("default"))) void trivel3RegisterClasses(platform::ClassRegistry& classes) {
    classes.add({"PlainPage", [](platform::Platform& platform) { return std::make_shared<PlainPage>(platform); }});
}
