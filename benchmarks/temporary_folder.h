// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace benchmarks {

/// Whether writes wait for the disk.
enum class Durability { flushed, inMemory };

/// A folder that is removed with all that is in it. Without flushing, what is measured is our own
/// work, so the folder is kept in memory where the machine has such a file system: a disk's own would
/// flush a file that is renamed over another.
class TemporaryFolder {
public:
    explicit TemporaryFolder(Durability durability);
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    const std::string& path() const { return _path; }

private:
    std::string _path;
};

}  // namespace benchmarks
