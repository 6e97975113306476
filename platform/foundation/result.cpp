// SPDX-License-Identifier: MIT
#include "platform/foundation/result.h"

namespace platform {

std::string Problem::text() const {
    std::string line = step;
    for (const auto& [separator, part] : {std::pair(" ", &path), std::pair(": ", &reason)}) {
        if (!line.empty() && !part->empty()) line += separator;
        line += *part;
    }
    return line;
}

}  // namespace platform
