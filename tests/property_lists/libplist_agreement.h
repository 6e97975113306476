// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string_view>

#include "platform/foundation/property_list.h"

namespace peers {

/// How our reading of a property list stands to libplist's.
struct Agreement {
    enum class Verdict {
        notCompared,  ///< one of the two does not read it, or libplist must not be given it
        agreed,
        excused,   ///< they differ, and a known difference says why
        differed,  ///< they differ for no known reason
    };
    Verdict verdict = Verdict::notCompared;
    /// The name of the known difference; empty unless excused.
    std::string_view excuse = {};
};

/// Compares the two readings in depth.
Agreement compareWithLibplist(std::string_view bytes, const platform::PropertyListReading& ours);

/// How many known differences there are.
std::size_t excuseCount();

}  // namespace peers
