// SPDX-License-Identifier: MIT
#include "hosts/phones/place.h"

#include <fcntl.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>

#include "hosts/phones/confined_open.h"
#include "hosts/phones/temporary_file.h"

namespace hosts {

namespace {

constexpr mode_t newFolderMode = 0755;

struct SplitPath {
    std::string_view folder;  // "/" for an entry of the root
    std::string_view name;    // empty when the path ends with a slash
};

SplitPath split(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string_view::npos) return {"/", path};
    return {slash == 0 ? "/" : path.substr(0, slash), path.substr(slash + 1)};
}

// Other errors do not tell where a link leads; to replace it then could cost the file behind it.
bool leadsToNoFile(int error) {
    return error == ENOENT || error == ENOTDIR || error == EISDIR || error == ELOOP || error == ENAMETOOLONG;
}

}  // namespace

bool PlaceFinder::check(bool succeeded, const char* step) {
    if (!succeeded) _failure = Failure{step, errno};
    return succeeded;
}

std::optional<Place> PlaceFinder::find(std::string_view path) {
    const auto [folderPath, name] = split(path);
    Descriptor folder = openFolder(folderPath);
    if (!check(folder.isOpen(), "cannot open its folder")) return std::nullopt;
    auto place = placeIn(std::move(folder), name);
    if (!check(place.has_value(), "cannot look at it") || !place->holds(S_IFLNK)) return place;
    auto target = followLink(path, *place);
    if (!check(target || leadsToNoFile(errno), "cannot follow the link that it is")) return std::nullopt;
    return target ? std::move(target) : std::move(place);
}

std::optional<Place> PlaceFinder::placeIn(Descriptor folder, std::string_view name) {
    const PathText text{name};
    if (text.get() == nullptr) return std::nullopt;
    if (name.empty() || name == "." || name == "..") {
        errno = EISDIR;
        return std::nullopt;
    }
    Place place{std::move(folder), std::string{name}, std::nullopt};
    if (!lookAgain(place)) return std::nullopt;
    return place;
}

bool PlaceFinder::lookAgain(Place& place) {
    struct stat status {};
    const bool isThere =
        uninterrupted([&] { return _calls.statusIn(place.folder.get(), place.name.c_str(), status); }) == 0;
    place.old = isThere ? std::optional(status) : std::nullopt;
    return check(isThere || errno == ENOENT, "cannot look at it");
}

std::optional<Place> PlaceFinder::followLink(std::string_view path, const Place& link) {
    std::string current{path};
    auto target = linkTarget(link);
    for (int followed = 0; followed < mostLinks; ++followed) {
        if (!target) return std::nullopt;
        current = target->starts_with('/') ? *target : std::string{split(current).folder} + "/" + *target;
        const auto [folderPath, name] = split(current);
        Descriptor folder = openFolder(folderPath);
        if (!folder.isOpen()) return std::nullopt;
        auto place = placeIn(std::move(folder), name);
        if (!place || place->holds(S_IFREG)) return place;
        errno = ENOENT;
        target = place->holds(S_IFLNK) ? linkTarget(*place) : std::nullopt;
    }
    errno = ELOOP;
    return std::nullopt;
}

std::optional<std::string> PlaceFinder::linkTarget(const Place& link) {
    std::array<char, PATH_MAX> target;
    const ssize_t length = uninterrupted(
        [&] { return _calls.readLink(link.folder.get(), link.name.c_str(), target.data(), target.size()); });
    if (length < 0) return std::nullopt;
    return std::string{target.data(), static_cast<std::size_t>(length)};
}

Descriptor PlaceFinder::openFolder(std::string_view path) {
    return openConfined(_calls, _root, path, O_RDONLY | O_DIRECTORY);
}

bool PlaceFinder::makeFolders(std::string_view path) {
    const std::string_view folders = split(path).folder;
    Descriptor folder = openFolder("/");
    std::size_t begin = folders.find_first_not_of('/');
    while (folder.isOpen() && begin < folders.size()) {
        const std::size_t end = std::min(folders.find('/', begin), folders.size());
        folder = openOrMakeChild(folder, folders.substr(0, end), std::string{folders.substr(begin, end - begin)});
        begin = folders.find_first_not_of('/', end);
    }
    return check(folder.isOpen(), "cannot open its folder");
}

Descriptor PlaceFinder::openOrMakeChild(const Descriptor& parent, std::string_view path, const std::string& name) {
    Descriptor folder = openFolder(path);
    if (folder.isOpen() || errno != ENOENT || !makeFolder(parent, name)) return folder;
    return openFolder(path);
}

bool PlaceFinder::makeFolder(const Descriptor& parent, const std::string& name) {
    if (uninterrupted([&] { return _calls.makeFolder(parent.get(), name.c_str(), newFolderMode); }) != 0) {
        return errno == EEXIST;
    }
    constexpr int flags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW;
    const Descriptor made = openEntry(_calls, parent, name, flags);
    // The process's own mask must not keep the phone's other programs out.
    return made.isOpen() && giveMode(_calls, made, newFolderMode) != Given::failed &&
           synchroniseFolder(_calls, parent) != Given::failed;
}

Given synchroniseFolder(FileCalls& calls, const Descriptor& folder) {
    if (synchroniseFile(calls, folder)) return Given::kept;
    return errno == EINVAL || errno == ENOTSUP ? Given::refused : Given::failed;
}

}  // namespace hosts
