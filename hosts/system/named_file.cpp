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

std::string kindName(mode_t mode) {
    if (S_ISREG(mode)) return "a regular file";
    if (S_ISDIR(mode)) return "a folder";
    if (S_ISFIFO(mode)) return "a FIFO";
    if (S_ISSOCK(mode)) return "a socket";
    return "a device";
}

bool namesOpenFile(const std::string& path) {
    struct stat status {};
    return !openNamed(path).isOpen() && errno == ELOOP && ::stat(path.c_str(), &status) == 0;
}

std::optional<std::string> namedInPlaceOfFile(const std::string& path) {
    const Descriptor thing = openNamed(path);
    struct stat status {};
    if (!thing.isOpen() || ::fstat(thing.get(), &status) != 0) return std::nullopt;
    if (S_ISREG(status.st_mode) || S_ISDIR(status.st_mode)) return std::nullopt;
    return kindName(status.st_mode);
}

}  // namespace hosts
