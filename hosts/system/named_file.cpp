// SPDX-License-Identifier: MIT
#include "hosts/system/named_file.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "hosts/system/descriptor.h"

namespace hosts {
namespace {

// Without the links by which the kernel leads to open files: a path of those is not opened, with ELOOP.
Descriptor openNamed(const std::string& path) {
    std::error_code failure;
    const std::string absolute = std::filesystem::absolute(path, failure);
    const Descriptor root{::open("/", O_PATH | O_DIRECTORY | O_CLOEXEC)};
    return Descriptor{uninterrupted(
        [&] { return FileCalls::system().openInRoot(root.get(), absolute.c_str(), O_PATH | O_CLOEXEC); })};
}

}  // namespace

bool namesOpenFile(const std::string& path) {
    struct stat status {};
    return !openNamed(path).isOpen() && errno == ELOOP && ::stat(path.c_str(), &status) == 0;
}

std::optional<std::string> namedInPlaceOfFile(const std::string& path) {
    const Descriptor thing = openNamed(path);
    struct stat status {};
    if (!thing.isOpen() || ::fstat(thing.get(), &status) != 0) return std::nullopt;
    if (S_ISFIFO(status.st_mode)) return "a FIFO";
    if (S_ISSOCK(status.st_mode)) return "a socket";
    if (S_ISCHR(status.st_mode) || S_ISBLK(status.st_mode)) return "a device";
    return std::nullopt;
}

}  // namespace hosts
