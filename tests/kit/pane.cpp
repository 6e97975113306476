// SPDX-License-Identifier: MIT
#include "tests/kit/pane.h"

#include <utility>

// The pane's own entry, so that its classes are found as a host finds them.
extern "C" platform::RegisterClasses trivel3RegisterClasses;

namespace kit {

Pane::Pane(Shape shape, std::string systemImage) : TestPlatform(shape, std::move(systemImage)) {
    trivel3RegisterClasses(classes);
}

platform::PSListController& Pane::openQuietly(std::string_view className) {
    platform::PSListController& page = screen.open(className);
    log.take();
    return page;
}

Event settingsWritten() {
    return event::write(std::string(settingsFile));
}

Event settingsNotWritten() {
    return event::write(std::string(settingsFile), false);
}

Event settingsChanged() {
    return event::notification(std::string(settingsNotification));
}

}  // namespace kit
