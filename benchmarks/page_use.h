// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>

#include "benchmarks/bench_phone.h"
#include "platform/list/list_controller.h"

namespace benchmarks {

/// Rows of 44 points on a 568-point screen, less the bars.
inline constexpr std::size_t rowsOfOneScreen = 11;

/// Null when there is no such page.
std::shared_ptr<platform::PSListController> makePage(BenchPhone& phone, const char* className);

/// Produces the cells of one screen, from this section on, and keeps none. Says how many.
std::size_t produceScreen(platform::PSListController& page, std::size_t firstSection = 0);

/// What a user waits for: the page made, loaded and its first screen produced, which ends the turn.
std::shared_ptr<platform::PSListController> openPage(BenchPhone& phone, const char* className);

}  // namespace benchmarks
