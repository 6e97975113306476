// SPDX-License-Identifier: MIT
#include "tree.h"

#include <fstream>
#include <iterator>

#include "platform/foundation/property_list.h"

namespace resources_test {

namespace fs = std::filesystem;

std::string bytesOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::optional<platform::Dictionary> dictionaryOf(const fs::path& file) {
    const auto reading = platform::readPropertyList(bytesOf(file));
    if (!reading || !reading.value->dictionary()) return std::nullopt;
    return *reading.value->dictionary();
}

Tree treeOf(const fs::path& root, const fs::path& leftOut) {
    Tree tree;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        if (entry.path().filename() == leftOut) continue;
        auto& content = tree[entry.path().lexically_relative(root)];
        if (entry.is_regular_file()) content = bytesOf(entry.path());
    }
    return tree;
}

void forEachFileNamed(const fs::path& name, const fs::path& root, const std::function<void(const fs::path&)>& visit) {
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        if (entry.is_regular_file() && entry.path().filename() == name) visit(entry.path());
    }
}

}  // namespace resources_test
