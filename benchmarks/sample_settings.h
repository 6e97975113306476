// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

#include "platform/foundation/value.h"

namespace benchmarks {

/// The two settings files that everything is measured on, each in both encodings.
struct SampleSettings {
    std::string name;  ///< "2 KB" or "600 KB"
    std::string xml;
    std::string binary;
};

/// This many applications, every second one ticked.
platform::Dictionary sampleTicks(std::size_t count);

/// All 26 keys, and these ticks.
platform::Dictionary settingsWithTicks(std::size_t ticks);

/// 20 ticks: what a phone in use holds.
const SampleSettings& smallSettings();
/// 10,000 ticks.
const SampleSettings& largeSettings();

}  // namespace benchmarks
