// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

namespace kit {

/// A new, empty folder of this machine, removed with all that is in it at the end.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return _path; }

private:
    std::filesystem::path _path;
};

}  // namespace kit
