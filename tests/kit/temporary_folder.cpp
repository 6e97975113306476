// SPDX-License-Identifier: MIT
#include "tests/kit/temporary_folder.h"

#include <stdlib.h>

#include <cerrno>
#include <string>
#include <system_error>

namespace kit {

TemporaryFolder::TemporaryFolder() {
    std::string name = std::filesystem::temp_directory_path() / "trivel3-test-XXXXXX";
    if (!::mkdtemp(name.data())) throw std::system_error(errno, std::generic_category(), name);
    _path = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(_path, ignored);
}

}  // namespace kit
