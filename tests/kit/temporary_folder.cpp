// SPDX-License-Identifier: MIT
#include "tests/kit/temporary_folder.h"

#include <stdlib.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
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

}  // namespace kit
