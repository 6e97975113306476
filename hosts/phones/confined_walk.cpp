// SPDX-License-Identifier: MIT
#include "hosts/phones/confined_walk.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <optional>
#include <string>
#include <vector>

#include "hosts/phones/confined_open.h"

namespace hosts {

namespace {

// Looks at each step without following it, and decides by what the descriptor shows: a name may have another meaning
// by the next call.
class Walk {
public:
    Walk(FileCalls& calls, int root, std::string_view path, int flags)
        : _calls(calls), _root(root), _rest(path), _flags(flags) {}

    Descriptor run();

private:
    Descriptor open(const std::string& name, int flags);
    std::string takeName();
    bool takeLast();
    bool stayOrGoUp(bool isUp);
    bool follow(const Descriptor& link);
    std::optional<Descriptor> openLast(const std::string& name, Descriptor thing, mode_t mode);
    bool follows() const { return (_flags & O_NOFOLLOW) == 0; }

    static constexpr int mostLooks = 64;

    FileCalls& _calls;
    int _root;
    std::string _rest;  // what is still to be gone, the links' targets put in their places
    int _flags;
    std::vector<Descriptor> _folders;  // those gone through, from below the root to where the walk is
    int _links = 0;
    int _looks = 0;
};

Descriptor failure(int error) {
    errno = error;
    return {};
}

bool isOfProcfs(const Descriptor& link) {
    struct statfs system {};
    return uninterrupted([&] { return ::fstatfs(link.get(), &system); }) == 0 &&
           static_cast<unsigned>(system.f_type) == PROC_SUPER_MAGIC;
}

Descriptor Walk::run() {
    if (_rest.empty()) return failure(ENOENT);
    while (true) {
        const std::string name = takeName();
        if (name.empty()) return open(".", _flags);
        if (name == "." || name == "..") {
            if (!stayOrGoUp(name == "..")) return {};
            continue;
        }
        Descriptor thing = open(name, O_PATH | O_NOFOLLOW);
        struct stat status {};
        if (!thing.isOpen() || uninterrupted([&] { return _calls.status(thing.get(), status); }) != 0) return {};
        const bool isLast = takeLast();
        if (S_ISLNK(status.st_mode) && (!isLast || follows())) {
            if (!follow(thing)) return {};
        } else if (!isLast) {
            _folders.push_back(std::move(thing));
        } else if (auto file = openLast(name, std::move(thing), status.st_mode)) {
            return *std::move(file);
        } else {
            _rest = name;
        }
    }
}

Descriptor Walk::open(const std::string& name, int flags) {
    const int folder = _folders.empty() ? _root : _folders.back().get();
    return Descriptor{uninterrupted([&] { return _calls.openIn(folder, name.c_str(), flags | O_CLOEXEC, 0); }), _calls};
}

std::string Walk::takeName() {
    const std::size_t begin = std::min(_rest.find_first_not_of('/'), _rest.size());
    const std::size_t end = std::min(_rest.find('/', begin), _rest.size());
    std::string name = _rest.substr(begin, end - begin);
    _rest.erase(0, end);
    return name;
}

// Whether nothing is to follow. A slash at the end asks for the folder that a link leads to, whatever the caller says.
bool Walk::takeLast() {
    if (_rest.find_first_not_of('/') != std::string::npos) return false;
    if (!_rest.empty()) _flags = (_flags | O_DIRECTORY) & ~O_NOFOLLOW;
    _rest.clear();
    return true;
}

// Going up leads back to where the walk came from: the folder itself may lie elsewhere by now.
bool Walk::stayOrGoUp(bool isUp) {
    if (!open(".", O_PATH).isOpen()) return false;
    if (isUp && !_folders.empty()) _folders.pop_back();
    return true;
}

bool Walk::follow(const Descriptor& link) {
    std::array<char, PATH_MAX> target{};
    if (++_links > mostLinks || isOfProcfs(link)) {
        errno = ELOOP;
        return false;
    }
    // An empty name stands for the open link itself.
    const auto read = [&] { return _calls.readLink(link.get(), "", target.data(), target.size() - 1); };
    if (uninterrupted(read) < 0) return false;
    if (target.front() == '/') _folders.clear();
    _rest.insert(0, target.data());
    return true;
}

// Nothing when the name has come to stand for something else since it was looked at: a link, or no folder any more.
std::optional<Descriptor> Walk::openLast(const std::string& name, Descriptor thing, mode_t mode) {
    if ((_flags & O_DIRECTORY) != 0 && !S_ISDIR(mode)) return failure(ENOTDIR);
    if ((_flags & O_PATH) != 0) return thing;
    if (S_ISLNK(mode)) return failure(ELOOP);
    Descriptor file = open(name, _flags | O_NOFOLLOW);
    const bool isAnother = !file.isOpen() && (errno == ELOOP || errno == ENOTDIR);
    if (isAnother && ++_looks < mostLooks) return std::nullopt;
    return file;
}

}  // namespace

Descriptor walkConfined(FileCalls& calls, int root, std::string_view path, int flags) {
    return Walk{calls, root, path, flags}.run();
}

}  // namespace hosts
