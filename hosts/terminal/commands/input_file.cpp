// SPDX-License-Identifier: MIT
#include "hosts/terminal/commands/input_file.h"

#include <cerrno>

#include "hosts/system/error_text.h"
#include "hosts/system/named_file.h"
#include "platform/foundation/system_file.h"
#include "platform/services/file_system.h"

namespace hosts::terminal {
namespace {

constexpr std::size_t mostBytes = platform::FileSystem::usualReadLimit;

}  // namespace

platform::Result<std::string> readInputFile(const std::string& path) {
    const std::string file = path == "-" ? "/dev/stdin" : path;
    if (const auto thing = namedInPlaceOfFile(file)) {
        return platform::Problem{file, {}, "it is " + *thing + ", not a file; what a program prints can be read as -"};
    }
    errno = 0;
    auto bytes = platform::readSystemFile(file, mostBytes + 1);
    if (!bytes) return platform::Problem{path, {}, errorText(errno) + "; give the path of a file that can be read"};
    if (bytes->size() > mostBytes) return platform::Problem{path, {}, "holds more than 64 MB, and no more is read"};
    return *std::move(bytes);
}

platform::Result<StoredSettings> readSettingsInput(const std::string& path) {
    const auto bytes = readInputFile(path);
    if (!bytes) return bytes.error();
    auto stored = readStoredSettings(*bytes);
    if (!stored) return platform::Problem{path == "-" ? "standard input" : path, "cannot read", stored.error().reason};
    return stored;
}

}  // namespace hosts::terminal
