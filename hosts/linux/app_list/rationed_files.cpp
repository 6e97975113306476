// SPDX-License-Identifier: MIT
#include "hosts/linux/app_list/rationed_files.h"

#include <algorithm>

namespace hosts {

bool RationedFiles::takeCall() {
    if (_left.calls == 0) return false;
    --_left.calls;
    return true;
}

bool RationedFiles::readFile(std::string_view path, std::string& contents, std::size_t limit) {
    contents.clear();
    if (!takeCall() || !_files.readFile(path, contents, std::min(limit, _left.bytes))) return false;
    _left.bytes -= contents.size();
    return true;
}

std::vector<std::string> RationedFiles::listFolder(std::string_view path) {
    if (!takeCall()) return {};
    std::vector<std::string> names = _files.listFolder(path);
    if (names.size() > _left.names) return {};
    _left.names -= names.size();
    return names;
}

}  // namespace hosts
