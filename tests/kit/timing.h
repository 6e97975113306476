// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

namespace kit {

template <typename Action>
std::chrono::steady_clock::duration timeOf(Action action) {
    const auto begin = std::chrono::steady_clock::now();
    action();
    return std::chrono::steady_clock::now() - begin;
}

}  // namespace kit
