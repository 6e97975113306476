// SPDX-License-Identifier: MIT
#include "hosts/app_list/rationed_files.h"

#include <algorithm>

namespace hosts {

void RationedFiles::refuse(std::string_view path) {
    if (_firstRefused.empty()) _firstRefused = path;
}

bool RationedFiles::takeCall(std::string_view path) {
    if (_left.calls == 0) {
        refuse(path);
        return false;
    }
    --_left.calls;
    return true;
}

std::optional<platform::Stamp> RationedFiles::look(std::string_view path) {
    if (!takeCall(path)) return std::nullopt;
    const auto stamp = _files.look(path);
    return stamp ? std::optional(*stamp) : std::nullopt;
}

std::optional<platform::Stamp> RationedFiles::readFile(std::string_view path, std::string& contents,
                                                       std::size_t limit) {
    contents.clear();
    if (!takeCall(path)) return std::nullopt;
    const auto stamp = _files.readFile(path, contents, std::min(limit, _left.bytes));
    if (!stamp) {
        if (_left.bytes < limit) refuse(path);
        return std::nullopt;
    }
    _left.bytes -= contents.size();
    return *stamp;
}

std::vector<std::string> RationedFiles::listFolder(std::string_view path) {
    std::vector<std::string> names;
    if (takeCall(path)) names = _files.listFolder(path).value_or({});
    if (names.size() > _left.names) {
        refuse(path);
        return {};
    }
    _left.names -= names.size();
    return names;
}

}  // namespace hosts
