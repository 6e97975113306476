// SPDX-License-Identifier: MIT
#pragma once

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "hosts/system/file_calls.h"

namespace kit {

/// The real calls, each reported before it is made, less the one that would only take time: whether a
/// file outlives a power cut is not to be seen from here. What `onCall` gives, when it is not 0, becomes
/// the call's errno in place of the call; closing happens all the same.
class WatchedCalls : public hosts::FileCalls {
public:
    using OnCall = std::function<int(const std::string& call, std::size_t number)>;
    using OnReturn = std::function<void(const std::string& call, std::size_t number)>;

    /// `onReturn` is told of each call that has been made.
    explicit WatchedCalls(OnCall onCall = nullptr, OnReturn onReturn = nullptr)
        : _onCall(std::move(onCall)), _onReturn(std::move(onReturn)) {}

    /// The names of the calls so far, failed ones included.
    const std::vector<std::string>& made() const { return _made; }
    void forget() { _made.clear(); }

    /// From now on one call writes so many bytes at most.
    void setMostPerWrite(std::size_t count) { _mostPerWrite = count; }

    int openInRoot(int root, const char* path, int flags) override {
        return watch("openInRoot", [&] { return FileCalls::openInRoot(root, path, flags); });
    }
    int openIn(int folder, const char* name, int flags, mode_t mode) override {
        return watch(openingName(name, flags), [&] { return FileCalls::openIn(folder, name, flags, mode); });
    }
    ssize_t read(int file, void* bytes, std::size_t room) override {
        return watch("read", [&] { return FileCalls::read(file, bytes, room); });
    }
    ssize_t write(int file, const void* bytes, std::size_t count) override {
        return watch("write", [&] { return FileCalls::write(file, bytes, std::min(count, _mostPerWrite)); });
    }
    int synchronise(int) override {
        return watch("synchronise", [] { return 0; });
    }
    int changeMode(int file, mode_t mode) override {
        return watch("changeMode", [&] { return FileCalls::changeMode(file, mode); });
    }
    int changeOwner(int file, uid_t owner, gid_t group) override {
        return watch("changeOwner", [&] { return FileCalls::changeOwner(file, owner, group); });
    }
    int lock(int file) override {
        return watch("lock", [&] { return FileCalls::lock(file); });
    }
    int status(int file, struct stat& status) override {
        return watch("status", [&] { return FileCalls::status(file, status); });
    }
    int statusIn(int folder, const char* name, struct stat& status) override {
        return watch("statusIn", [&] { return FileCalls::statusIn(folder, name, status); });
    }
    ssize_t readLink(int folder, const char* name, char* target, std::size_t room) override {
        return watch("readLink", [&] { return FileCalls::readLink(folder, name, target, room); });
    }
    ssize_t listAttributes(int file, char* names, std::size_t room) override {
        return watch("listAttributes", [&] { return FileCalls::listAttributes(file, names, room); });
    }
    ssize_t readAttribute(int file, const char* name, void* value, std::size_t room) override {
        return watch("readAttribute", [&] { return FileCalls::readAttribute(file, name, value, room); });
    }
    int setAttribute(int file, const char* name, const void* value, std::size_t size) override {
        return watch("setAttribute", [&] { return FileCalls::setAttribute(file, name, value, size); });
    }
    int makeFolder(int folder, const char* name, mode_t mode) override {
        return watch("makeFolder", [&] { return FileCalls::makeFolder(folder, name, mode); });
    }
    int rename(int folder, const char* from, const char* to) override {
        return watch("rename", [&] { return FileCalls::rename(folder, from, to); });
    }
    int unlink(int folder, const char* name) override {
        return watch("unlink", [&] { return FileCalls::unlink(folder, name); });
    }
    int close(int file) override {
        bool closed = false;
        const int result = watch("close", [&] {
            closed = true;
            return FileCalls::close(file);
        });
        if (closed) return result;
        const int error = errno;
        FileCalls::close(file);
        errno = error;
        return result;
    }

private:
    // A file that is there already is only opened to see whether it has been abandoned.
    static std::string openingName(const std::string& name, int flags) {
        if (name == ".") return "list";
        return (flags & (O_CREAT | O_DIRECTORY)) != 0 ? "openIn" : "inspect";
    }

    template <typename Call>
    auto watch(std::string name, Call call) -> decltype(call()) {
        const std::size_t number = _made.size();
        _made.push_back(std::move(name));
        if (const int error = _onCall ? _onCall(_made[number], number) : 0) {
            errno = error;
            return -1;
        }
        const auto result = call();
        const int error = errno;
        if (_onReturn) _onReturn(_made[number], number);
        errno = error;
        return result;
    }

    OnCall _onCall;
    OnReturn _onReturn;
    std::size_t _mostPerWrite = std::numeric_limits<std::size_t>::max();
    std::vector<std::string> _made;
};

}  // namespace kit
