// SPDX-License-Identifier: MIT
#include "hosts/phones/key_change.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace hosts {

using platform::Dictionary;
using platform::Value;

// Side by side, both being in the order of their keys: a large file is compared after each change of it.
std::vector<KeyChange> differences(const Dictionary& before, const Dictionary& after) {
    std::vector<KeyChange> changes;
    std::vector<KeyChange> came;
    auto now = after.begin();
    for (const auto& [key, value] : before) {
        for (; now != after.end() && now->key != key && platform::precedesInUtf16Order(now->key, key); ++now)
            came.push_back({now->key, std::nullopt, now->value});
        if (now == after.end() || now->key != key) {
            changes.push_back({key, value, std::nullopt});
        } else {
            if (!(now->value == value)) changes.push_back({key, value, now->value});
            ++now;
        }
    }
    for (; now != after.end(); ++now)
        came.push_back({now->key, std::nullopt, now->value});
    std::ranges::move(came, std::back_inserter(changes));
    return changes;
}

std::vector<KeyChange> differences(const std::optional<Value>& before, const std::optional<Value>& after) {
    static const Dictionary none;
    const Dictionary* const old = before ? before->dictionary() : nullptr;
    const Dictionary* const now = after ? after->dictionary() : nullptr;
    return differences(old ? *old : none, now ? *now : none);
}

}  // namespace hosts
