// SPDX-License-Identifier: MIT
#pragma once

#include <cerrno>
#include <functional>
#include <string>
#include <vector>

#include "hosts/linux/file_calls.h"

namespace test {

/// The real calls, each reported before it is made, less the one that would only take time: whether a
/// file outlives a power cut is not to be seen from here. What `onCall` gives, when it is not 0, becomes
/// the call's errno in place of the call; closing happens all the same.
class WatchedCalls : public hosts::FileCalls {
public:
    using OnCall = std::function<int(const std::string& call, std::size_t number)>;

    explicit WatchedCalls(OnCall onCall = nullptr) : _onCall(std::move(onCall)) {}

    /// The names of the calls so far, failed ones included.
    const std::vector<std::string>& made() const { return _made; }
    void forget() { _made.clear(); }

    int openInRoot(int root, const char* path, int flags) override {
        return fails("openInRoot") ? -1 : FileCalls::openInRoot(root, path, flags);
    }
    int openIn(int folder, const char* name, int flags, mode_t mode) override {
        return fails(std::string{name} == "." ? "list" : "openIn") ? -1 : FileCalls::openIn(folder, name, flags, mode);
    }
    ssize_t write(int file, const void* bytes, std::size_t count) override {
        return fails("write") ? -1 : FileCalls::write(file, bytes, count);
    }
    int synchronise(int) override { return fails("synchronise") ? -1 : 0; }
    int changeMode(int file, mode_t mode) override {
        return fails("changeMode") ? -1 : FileCalls::changeMode(file, mode);
    }
    int changeOwner(int file, uid_t owner, gid_t group) override {
        return fails("changeOwner") ? -1 : FileCalls::changeOwner(file, owner, group);
    }
    int lock(int file) override { return fails("lock") ? -1 : FileCalls::lock(file); }
    int status(int file, struct stat& status) override {
        return fails("status") ? -1 : FileCalls::status(file, status);
    }
    int statusIn(int folder, const char* name, struct stat& status) override {
        return fails("statusIn") ? -1 : FileCalls::statusIn(folder, name, status);
    }
    ssize_t readLink(int folder, const char* name, char* target, std::size_t room) override {
        return fails("readLink") ? -1 : FileCalls::readLink(folder, name, target, room);
    }
    int makeFolder(int folder, const char* name, mode_t mode) override {
        return fails("makeFolder") ? -1 : FileCalls::makeFolder(folder, name, mode);
    }
    int rename(int folder, const char* from, const char* to) override {
        return fails("rename") ? -1 : FileCalls::rename(folder, from, to);
    }
    int unlink(int folder, const char* name) override { return fails("unlink") ? -1 : FileCalls::unlink(folder, name); }
    int close(int file) override {
        const bool failed = fails("close");
        const int error = errno;
        const int result = FileCalls::close(file);
        errno = failed ? error : errno;
        return failed ? -1 : result;
    }

private:
    bool fails(std::string call) {
        _made.push_back(std::move(call));
        const int error = _onCall ? _onCall(_made.back(), _made.size() - 1) : 0;
        if (error != 0) errno = error;
        return error != 0;
    }

    OnCall _onCall;
    std::vector<std::string> _made;
};

}  // namespace test
