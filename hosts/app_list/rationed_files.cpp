// SPDX-License-Identifier: MIT
#include "hosts/app_list/rationed_files.h"

#include <algorithm>

namespace hosts {

bool RationedFiles::refuse(std::string_view path) {
    if (_firstRefused.empty()) _firstRefused = path;
    return false;
}

bool RationedFiles::takeCall(std::string_view path) {
    if (_left.calls == 0) return refuse(path);
    --_left.calls;
    return true;
}

bool RationedFiles::readFile(std::string_view path, std::string& contents, std::size_t limit) {
    contents.clear();
    if (!takeCall(path)) return false;
    if (!_files.readFile(path, contents, std::min(limit, _left.bytes))) return _left.bytes < limit && refuse(path);
    _left.bytes -= contents.size();
    return true;
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
