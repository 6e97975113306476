// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/services/file_system.h"

namespace hosts {

/// A file system over another: what is written stays in memory and is found there, and the file
/// system below is only read. For looking at a page, whose repairs must not touch the phone.
class ScratchFileSystem final : public platform::FileSystem {
public:
    explicit ScratchFileSystem(const platform::FileSystem& below) : _below(below) {}

    using platform::FileSystem::readFile;
    bool readFile(std::string_view path, std::string& contents, std::size_t limit) const override {
        auto written = _written.find(path);
        if (written == _written.end()) return _below.readFile(path, contents, limit);
        contents = written->second;
        return true;
    }
    std::vector<std::string> listFolder(std::string_view path) const override { return _below.listFolder(path); }
    bool writeFileAtomically(std::string_view path, std::string_view contents) override {
        _written.insert_or_assign(std::string(path), std::string(contents));
        return true;
    }

private:
    const platform::FileSystem& _below;
    std::map<std::string, std::string, std::less<>> _written;
};

}  // namespace hosts
