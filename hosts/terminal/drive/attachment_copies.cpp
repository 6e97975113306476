// SPDX-License-Identifier: MIT
#include "hosts/terminal/drive/attachment_copies.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace hosts::terminal {

std::optional<std::string> AttachmentCopies::write(const std::string& name, const std::string& data) {
    if (name.empty() || name.find('/') != name.npos || name == "." || name == "..") return std::nullopt;
    const char* configured = std::getenv("TMPDIR");
    std::string folder = std::string(configured && *configured ? configured : "/tmp") + "/trivel3-XXXXXX";
    if (!::mkdtemp(folder.data())) return std::nullopt;
    std::string path = folder + "/" + name;
    std::ofstream file(path, std::ios::binary);
    file << data << std::flush;
    if (file) return path;
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
    return std::nullopt;
}

}  // namespace hosts::terminal
