// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "platform/foundation/export.h"
#include "platform/foundation/object.h"
#include "platform/ui/image.h"

namespace platform {

/// The app-list service: what is installed on the phone. It comes from a bundle of its own and is
/// looked up by its class name each time that it is needed.
class TRIVEL3_PLATFORM_EXPORT ALApplicationList : public Object {
public:
    static constexpr const char* className = "ALApplicationList";
    /// The small icon size, in points.
    static constexpr int iconSizeSmall = 29;

    /// Bundle identifier to display name.
    using Applications = std::map<std::string, std::string>;

    virtual Applications applications() = 0;
    /// Those for which "isSystemApplication" is as given: `applicationsFilteredUsingPredicate:` with the one
    /// of its predicates "isSystemApplication = TRUE" or "isSystemApplication = FALSE".
    virtual Applications applicationsFilteredBySystem(bool isSystemApplication) = 0;
    /// Null when the application has no icon.
    virtual std::shared_ptr<const UIImage> iconOfSize_forDisplayIdentifier(int size, std::string_view identifier) = 0;
};

}  // namespace platform
