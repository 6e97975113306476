// SPDX-License-Identifier: MIT
#include "hosts/app_list/rationed_files.h"

#include <algorithm>

namespace hosts {

void RationedFiles::noteRefused(std::string_view path) {
    if (_firstRefused.empty()) _firstRefused = path;
}

bool RationedFiles::takeCall(std::string_view path) {
    if (_left.calls == 0) {
        noteRefused(path);
        return false;
    }
    --_left.calls;
    return true;
}

bool RationedFiles::readFile(std::string_view path, std::string& contents, std::size_t limit) {
    contents.clear();
    if (!takeCall(path)) return false;
    if (!_files.readFile(path, contents, std::min(limit, _left.bytes))) {
        if (_left.bytes < limit) noteRefused(path);
        return false;
    }
    _left.bytes -= contents.size();
    return true;
}

std::vector<std::string> RationedFiles::listFolder(std::string_view path) {
    if (!takeCall(path)) return {};
    std::vector<std::string> names = _files.listFolder(path).value_or({});
    if (names.size() > _left.names) {
        noteRefused(path);
        return {};
    }
    _left.names -= names.size();
    return names;
}

}  // namespace hosts
