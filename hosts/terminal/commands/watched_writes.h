// SPDX-License-Identifier: MIT
#pragma once

#include "platform/services/file_system.h"

namespace hosts::terminal {

/// Writes go through to another file system. Since the pane's write rule tells nothing of failure, what
/// became of its last write is kept here.
class WatchedWrites final : public platform::FileSystem {
public:
    enum class Outcome { notTried, worked, failed };

    explicit WatchedWrites(platform::FileSystem& files) : _files(files) {}

    using platform::FileSystem::readFile;
    bool readFile(std::string_view path, std::string& contents, std::size_t limit) const override {
        return _files.readFile(path, contents, limit);
    }
    std::vector<std::string> listFolder(std::string_view path) const override { return _files.listFolder(path); }
    bool writeFileAtomically(std::string_view path, std::string_view contents) override {
        const bool written = _files.writeFileAtomically(path, contents);
        _outcome = written ? Outcome::worked : Outcome::failed;
        return written;
    }

    void forget() { _outcome = Outcome::notTried; }
    Outcome outcome() const { return _outcome; }

private:
    platform::FileSystem& _files;
    Outcome _outcome = Outcome::notTried;
};

}  // namespace hosts::terminal
