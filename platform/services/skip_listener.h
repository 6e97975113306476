// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace platform {

/// Is told what a host's services pass over on the phone, for a user who wants to know. The pages
/// themselves are silent about it.
class SkipListener {
public:
    virtual ~SkipListener() = default;

    /// `path` is the phone's own; `reason` is one clause without a full stop. Both come from a phone
    /// and may hold any bytes. The same may be told many times.
    virtual void skipped(std::string_view path, std::string_view reason) = 0;
};

/// For services whose user may not want to know.
inline void tellSkipped(SkipListener* listener, std::string_view path, std::string_view reason) {
    if (listener) listener->skipped(path, reason);
}

}  // namespace platform
