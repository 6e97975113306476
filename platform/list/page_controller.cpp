// SPDX-License-Identifier: MIT
#include "platform/list/page_controller.h"

#include "platform/ui/navigation_controller.h"

namespace platform {

void PSViewController::pushController(std::shared_ptr<PSViewController> controller) {
    if (navigationController()) navigationController()->pushViewController_animated(std::move(controller), true);
}

}  // namespace platform
