// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "benchmarks/application_phone.h"

namespace benchmarks {

/// Adds the measurements of a page's cells, one after the other down to the last: their time when the
/// rows have their icons, and when each row's icon is fetched for the first time. `phone` begins the
/// names of the jobs.
void addScrolling(const TickPage& kind, std::size_t applications, const std::string& phone);

}  // namespace benchmarks
