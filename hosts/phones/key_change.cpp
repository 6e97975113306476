// SPDX-License-Identifier: MIT
#include "hosts/phones/key_change.h"

#include <utility>

namespace hosts {

using platform::Dictionary;
using platform::Value;

std::vector<KeyChange> differences(const Dictionary& before, const Dictionary& after) {
    std::vector<KeyChange> changes;
    for (const auto& [key, value] : before) {
        auto now = after.valueForKey(key);
        if (now != value) changes.push_back({key, value, std::move(now)});
    }
    for (const auto& [key, value] : after) {
        if (!before.contains(key)) changes.push_back({key, std::nullopt, value});
    }
    return changes;
}

std::vector<KeyChange> differences(const std::optional<Value>& before, const std::optional<Value>& after) {
    static const Dictionary none;
    const Dictionary* const old = before ? before->dictionary() : nullptr;
    const Dictionary* const now = after ? after->dictionary() : nullptr;
    return differences(old ? *old : none, now ? *now : none);
}

}  // namespace hosts
