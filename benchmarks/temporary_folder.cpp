// SPDX-License-Identifier: MIT
#include "benchmarks/temporary_folder.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace benchmarks {
namespace {

// Whoever starts the program may choose it, to find what an interrupted run has left behind.
std::string namePrefix() {
    const char* chosen = std::getenv("TRIVEL3_BENCHMARK_PREFIX");
    return chosen ? chosen : "trivel3-benchmark-";
}

}  // namespace

TemporaryFolder::TemporaryFolder(Durability durability) {
    const std::filesystem::path memory = "/dev/shm";
    const bool inMemory = durability == Durability::inMemory && std::filesystem::is_directory(memory);
    const std::filesystem::path parent = inMemory ? memory : std::filesystem::temp_directory_path();
    _path = (parent / (namePrefix() + "XXXXXX")).string();
    if (!::mkdtemp(_path.data())) throw std::runtime_error(_path + ": cannot be made");
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(_path, ignored);
}

}  // namespace benchmarks
