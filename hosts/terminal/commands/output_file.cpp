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

bool replaceFile(const std::string& path, std::string_view bytes, std::string& error) {
    std::error_code problem;
    // Links are followed here: each would be taken for one that points into the folder opened below.
    const fs::path real = fs::canonical(path, problem);
    auto machine = problem ? std::nullopt : PhoneFileSystem::open("/", error);
    if (problem) error = path + ": " + problem.message();
    if (!machine) return false;
    if (machine->writeFileAtomically(real.string(), bytes)) return true;
    error = machine->lastError();
    return false;
}

struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

bool writeInto(const std::string& path, std::string_view bytes, std::string& error) {
    std::error_code ignored;
    const bool isNew = fs::symlink_status(path, ignored).type() == fs::file_type::not_found;
    std::unique_ptr<std::FILE, Close> file(std::fopen(path.c_str(), "wbe"));
    const bool written =
        file && std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size() && std::fflush(file.get()) == 0;
    if (written) return true;
    error = "cannot write " + path + ": " + errorText(errno);
    if (file && isNew) fs::remove(path, ignored);
    return false;
}

}  // namespace

bool writeOutputFile(const std::string& path, std::string_view bytes, std::string& error) {
    std::error_code ignored;
    return fs::is_regular_file(path, ignored) ? replaceFile(path, bytes, error) : writeInto(path, bytes, error);
}

}  // namespace hosts::terminal
