// SPDX-License-Identifier: MIT
#pragma once

#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "tests/kit/temporary_folder.h"

namespace test {

/// A folder that goes, with all that is in it, at the end. Paths are texts, as the programs have them.
class TemporaryFolder {
public:
    const std::string& path() const { return _path; }
    std::string operator/(std::string_view below) const { return _path + "/" + std::string{below}; }

private:
    kit::TemporaryFolder _folder;
    std::string _path = _folder.path().string();
};

inline void writeText(const std::string& path, std::string_view text) {
    std::filesystem::create_directories(std::filesystem::path{path}.parent_path());
    std::ofstream file{path, std::ios::binary | std::ios::trunc};
    file.exceptions(std::ios::failbit | std::ios::badbit);
    file << text << std::flush;
}

/// What the file holds, or "(no file)".
inline std::string readText(const std::string& path) {
    std::ifstream file{path, std::ios::binary};
    if (!file) return "(no file)";
    return {std::istreambuf_iterator<char>{file}, {}};
}

inline std::vector<std::string> namesIn(const std::string& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator{folder})
        names.push_back(entry.path().filename());
    return names;
}

inline uid_t ownerOf(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? status.st_uid : static_cast<uid_t>(-1);
}

inline std::size_t openDescriptors() {
    return namesIn("/proc/self/fd").size();
}

}  // namespace test
