// SPDX-License-Identifier: MIT
#include "hosts/terminal/commands/output_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

#include "hosts/phones/phone_file_system.h"
#include "hosts/phones/temporary_file.h"
#include "hosts/system/error_text.h"
#include "hosts/system/named_file.h"
#include "hosts/terminal/render/printable.h"
#include "hosts/terminal/render/standard_output.h"

namespace hosts::terminal {
namespace {

namespace fs = std::filesystem;

using platform::Problem;
using platform::Result;

Result<platform::Done> replaceFile(const std::string& path, std::string_view bytes) {
    std::error_code problem;
    // Links are followed here: each would be taken for one that points into the folder opened below.
    const fs::path real = fs::canonical(path, problem);
    if (problem) return Problem{path, {}, problem.message()};
    auto machine = PhoneFileSystem::open("/");
    if (!machine) return machine.error();
    const auto changed = machine->changeFile(
        real.string(),
        [bytes = std::string(bytes)](std::optional<std::string_view>) { return Result(platform::NewContent{bytes}); });
    if (!changed) return changed.error();
    return platform::Done();
}

// Where a link that leads to nothing yet would have the file.
fs::path placeOf(const std::string& path) {
    constexpr int mostLinks = 40;
    std::error_code problem;
    fs::path place = path;
    for (int followed = 0; followed < mostLinks && fs::is_symlink(place, problem); ++followed)
        place = place.parent_path() / fs::read_symlink(place, problem);
    return place;
}

Result<platform::Done> makeFile(const std::string& path, std::string_view bytes, mode_t mode) {
    const fs::path place = placeOf(path);
    const std::string parent = place.has_parent_path() ? place.parent_path().string() : ".";
    const std::string name = place.filename();
    const Descriptor folder{::open(parent.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    if (folder.isOpen()) {
        removeAbandoned(FileCalls::system(), folder, name, false);
        TemporaryFile file{FileCalls::system(), folder, name};
        if (file.create(mode) && file.fill(bytes) && file.synchronise() && file.publish()) {
            return platform::Done();
        }
    }
    return Problem{path, "cannot write", errorText(errno)};
}

struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

Result<platform::Done> writeInto(const std::string& path, std::string_view bytes) {
    std::unique_ptr<std::FILE, Close> file(std::fopen(path.c_str(), "wbe"));
    const bool written =
        file && std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size() && std::fflush(file.get()) == 0;
    if (written) return platform::Done();
    return Problem{path, "cannot write", errorText(errno)};
}

}  // namespace

Result<platform::Done> writeOutputFile(const std::string& path, std::string_view bytes, mode_t mode) {
    std::error_code ignored;
    const fs::file_type kind = fs::status(path, ignored).type();
    if (kind == fs::file_type::not_found) return makeFile(path, bytes, mode);
    const bool isOwn = kind == fs::file_type::regular && !namesOpenFile(path);
    return isOwn ? replaceFile(path, bytes) : writeInto(path, bytes);
}

Result<platform::Done> writeOutput(const std::string& output, std::string_view bytes, mode_t mode) {
    if (output != "-") return writeOutputFile(output, bytes, mode);
    print(::isatty(STDOUT_FILENO) == 1 ? printableLines(bytes) : std::string(bytes));
    return platform::Done();
}

}  // namespace hosts::terminal
