// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/foundation/value.h"

namespace hosts {

/// The storage of a file system, counted in blocks.
struct DiskBlocks {
    std::uint64_t size = 0;  ///< of each, in bytes
    std::uint64_t all = 0;
    std::uint64_t unused = 0;
    std::uint64_t available = 0;  ///< of the unused ones, to other users than root
};

/// The same in bytes and under the platform's names, the answer to "DiskUsage".
platform::Dictionary diskUsage(const DiskBlocks& blocks);

/// What `df -k -P` tells of one file system. Nothing for text of another form.
std::optional<DiskBlocks> readDiskFree(std::string_view output);

}  // namespace hosts
