// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/services/file_system.h"

namespace hosts::desktop {

/// The phone's file system, with a note of what the pane has written last: by it, a change that
/// another process has made is told from our own.
class NotedFiles final : public platform::FileSystem {
public:
    /// `below` outlives the object.
    explicit NotedFiles(platform::FileSystem& below) : _below(below) {}

    using platform::FileSystem::readFile;
    bool readFile(std::string_view path, std::string& contents, std::size_t limit) const override {
        return _below.readFile(path, contents, limit);
    }
    std::vector<std::string> listFolder(std::string_view path) const override { return _below.listFolder(path); }
    bool writeFileAtomically(std::string_view path, std::string_view contents) override {
        const bool worked = _below.writeFileAtomically(path, contents);
        if (worked) _known.insert_or_assign(std::string(path), std::string(contents));
        return worked;
    }

    /// Whether the file holds something else than was last written or seen here; it then counts as
    /// seen. A file that cannot be read counts as an empty one.
    bool noteChange(std::string_view path) {
        std::string contents;
        readFile(path, contents);
        auto known = _known.find(path);
        if (known != _known.end() && known->second == contents) return false;
        const bool isFirstLook = known == _known.end();
        _known.insert_or_assign(std::string(path), std::move(contents));
        return !isFirstLook;
    }

private:
    platform::FileSystem& _below;
    std::map<std::string, std::string, std::less<>> _known;
};

}  // namespace hosts::desktop
