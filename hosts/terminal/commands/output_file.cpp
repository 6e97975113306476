// SPDX-License-Identifier: MIT
#include "hosts/terminal/commands/output_file.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

#include "hosts/phones/phone_file_system.h"
#include "hosts/system/error_text.h"

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

struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

Result<platform::Done> writeInto(const std::string& path, std::string_view bytes) {
    std::error_code ignored;
    const bool isNew = fs::symlink_status(path, ignored).type() == fs::file_type::not_found;
    std::unique_ptr<std::FILE, Close> file(std::fopen(path.c_str(), "wbe"));
    const bool written =
        file && std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size() && std::fflush(file.get()) == 0;
    if (written) return platform::Done();
    const Problem failure{path, "cannot write", errorText(errno)};
    if (file && isNew) fs::remove(path, ignored);
    return failure;
}

}  // namespace

Result<platform::Done> writeOutputFile(const std::string& path, std::string_view bytes) {
    std::error_code ignored;
    return fs::is_regular_file(path, ignored) ? replaceFile(path, bytes) : writeInto(path, bytes);
}

}  // namespace hosts::terminal
