// SPDX-License-Identifier: MIT
#include "hosts/session/installation.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "hosts/system/error_text.h"

namespace hosts {

namespace {

std::string absolutePath(std::string_view path) {
    std::error_code ignored;
    return std::filesystem::absolute(path, ignored).lexically_normal().string();
}

}  // namespace

Installation installationAround(std::string_view executable, std::string_view systemImage) {
    const auto fromProgram = [folder = std::filesystem::path{executable}.parent_path()](const char* path) {
        return (folder / path).lexically_normal().string();
    };
    Installation installation;
    installation.modules = fromProgram(TRIVEL3_MODULES);
    installation.data = fromProgram(TRIVEL3_DATA);
    installation.systemImage = systemImage.empty() ? installation.modules + "/system" : absolutePath(systemImage);
    return installation;
}

platform::Result<Installation> findInstallation() {
    std::array<char, PATH_MAX> executable;
    const ssize_t length = ::readlink("/proc/self/exe", executable.data(), executable.size());
    if (length < 0) {
        return platform::Problem{"/proc/self/exe", "cannot tell where this program is installed:", errorText(errno)};
    }
    const char* systemImage = ::secure_getenv("TRIVEL3_SYSTEM_IMAGE");
    return installationAround({executable.data(), static_cast<std::size_t>(length)},
                              systemImage == nullptr ? "" : systemImage);
}

}  // namespace hosts
