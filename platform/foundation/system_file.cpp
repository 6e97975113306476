// SPDX-License-Identifier: MIT
#include "platform/foundation/system_file.h"

#include <algorithm>
#include <cstdio>
#include <memory>

namespace platform {

std::optional<std::string> readSystemFile(const std::string& path, std::size_t limit) {
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    std::unique_ptr<std::FILE, Close> file(std::fopen(path.c_str(), "rbe"));
    if (!file) return std::nullopt;
    std::string content;
    char block[16384];
    while (content.size() < limit) {
        std::size_t wanted = std::min(sizeof block, limit - content.size());
        std::size_t got = std::fread(block, 1, wanted, file.get());
        content.append(block, got);
        if (got < wanted) break;
    }
    if (std::ferror(file.get())) return std::nullopt;
    return content;
}

}  // namespace platform
