// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string_view>

#include "platform/ui/device.h"

namespace hosts {

/// The endings by which an application tells what is meant for one kind of device alone.
namespace idiom {

inline constexpr std::string_view phone = "~iphone";
inline constexpr std::string_view pad = "~ipad";

/// The endings to try on a device, its own first and the other kind's last; the empty one stands for
/// what is meant for all.
inline std::array<std::string_view, 3> endingsFor(const platform::UIDevice& device) {
    const bool isPad = device.userInterfaceIdiom == platform::UIDevice::idiomPad;
    return {isPad ? pad : phone, "", isPad ? phone : pad};
}

}  // namespace idiom

}  // namespace hosts
