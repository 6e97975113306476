// SPDX-License-Identifier: MIT
#include "tests/kit/temporary_folder.h"

#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

namespace kit {
namespace {

constexpr const char* memoryFolder = "/dev/shm";

// In memory where nothing else is asked for: on a disk that others keep busy, making and removing
// thousands of small files takes most of the tests' time.
std::filesystem::path parentFolder() {
    const bool isAskedFor = std::getenv("TMPDIR") != nullptr;
    const bool hasMemoryFolder = ::access(memoryFolder, W_OK | X_OK) == 0;
    return !isAskedFor && hasMemoryFolder ? memoryFolder : std::filesystem::temp_directory_path();
}

}  // namespace

TemporaryFolder::TemporaryFolder() {
    std::string name = parentFolder() / "trivel3-test-XXXXXX";
    if (!::mkdtemp(name.data())) throw std::system_error(errno, std::generic_category(), name);
    _path = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(_path, ignored);
}

void writeText(const std::string& path, std::string_view text) {
    std::filesystem::create_directories(std::filesystem::path{path}.parent_path());
    std::ofstream file{path, std::ios::binary | std::ios::trunc};
    file.exceptions(std::ios::failbit | std::ios::badbit);
    file << text << std::flush;
}

std::string readText(const std::string& path) {
    std::ifstream file{path, std::ios::binary};
    if (!file) return "(no file)";
    return {std::istreambuf_iterator<char>{file}, {}};
}

std::vector<std::string> namesIn(const std::string& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator{folder})
        names.push_back(entry.path().filename());
    return names;
}

uid_t ownerOf(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? status.st_uid : static_cast<uid_t>(-1);
}

std::size_t openDescriptors() {
    return namesIn("/proc/self/fd").size();
}

}  // namespace kit
