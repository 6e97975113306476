// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/foundation/value.h"

namespace hosts {

/// A key whose value is another than before; nothing stands for an absent key.
struct KeyChange {
    std::string key;
    std::optional<platform::Value> before;
    std::optional<platform::Value> after;
};

/// The keys that became others or went, in the order of `before`, then those that came.
std::vector<KeyChange> differences(const platform::Dictionary& before, const platform::Dictionary& after);

/// The same for what a key holds; what is no dictionary counts as an empty one.
std::vector<KeyChange> differences(const std::optional<platform::Value>& before,
                                   const std::optional<platform::Value>& after);

}  // namespace hosts
