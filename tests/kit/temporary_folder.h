// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace kit {

/// A new, empty folder of this machine, removed with all that is in it at the end.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return _path; }
    std::string operator/(std::string_view below) const { return _path.string().append("/").append(below); }

private:
    std::filesystem::path _path;
};

/// Makes the file's folder where there is none.
void writeText(const std::string& path, std::string_view text);
/// What the file holds, or "(no file)".
std::string readText(const std::string& path);

std::vector<std::string> namesIn(const std::string& folder);
uid_t ownerOf(const std::string& path);
/// Of this process.
std::size_t openDescriptors();

}  // namespace kit

// What these were called before.
