// SPDX-License-Identifier: MIT
#include "hosts/phones/atomic_writer.h"

#include <fcntl.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>

#include "hosts/phones/confined_open.h"
#include "hosts/phones/file_attributes.h"
#include "hosts/phones/temporary_file.h"

namespace hosts {

namespace {

constexpr mode_t newFileMode = 0644;
constexpr mode_t newFolderMode = 0755;
constexpr mode_t permissionBits = 0777;

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

std::optional<AtomicWriter::Failure> AtomicWriter::write(std::string_view path, std::string_view contents) {
    _failure.reset();
    auto place = findPlace(path);
    if (!place) return _failure;
    if (place->holds(S_IFLNK)) {
        auto target = followLink(path, *place);
        if (!check(target || leadsToNoFile(errno), "cannot follow the link that it is")) return _failure;
        if (target) place = std::move(target);
    }
    replace(*place, contents);
    return _failure;
}

bool AtomicWriter::check(bool succeeded, const char* step) {
    if (!succeeded) _failure = Failure{step, errno};
    return succeeded;
}

std::optional<AtomicWriter::Place> AtomicWriter::findPlace(std::string_view path) {
    const auto [folderPath, name] = split(path);
    Descriptor folder = openOrMakeFolder(folderPath);
    if (!check(folder.isOpen(), "cannot open its folder")) return std::nullopt;
    auto place = lookAt(std::move(folder), name);
    check(place.has_value(), "cannot look at it");
    return place;
}

std::optional<AtomicWriter::Place> AtomicWriter::lookAt(Descriptor folder, std::string_view name) {
    const PathText text{name};
    if (text.get() == nullptr) return std::nullopt;
    if (name.empty() || name == "." || name == "..") {
        errno = EISDIR;
        return std::nullopt;
    }
    Place place{std::move(folder), std::string{name}, std::nullopt};
    struct stat status {};
    if (uninterrupted([&] { return _calls.statusIn(place.folder.get(), text.get(), status); }) == 0) {
        place.old = status;
    } else if (errno != ENOENT) {
        return std::nullopt;
    }
    return place;
}

// Each step is looked up anew from the root, so that wherever a link points, and whatever is changed
// meanwhile, the folder that is found is one of the phone's.
std::optional<AtomicWriter::Place> AtomicWriter::followLink(std::string_view path, const Place& link) {
    std::string current{path};
    auto target = linkTarget(link);
    for (int followed = 0; followed < mostLinks; ++followed) {
        if (!target) return std::nullopt;
        current = target->starts_with('/') ? *target : std::string{split(current).folder} + "/" + *target;
        const auto [folderPath, name] = split(current);
        Descriptor folder = openFolder(folderPath);
        if (!folder.isOpen()) return std::nullopt;
        auto place = lookAt(std::move(folder), name);
        if (!place || place->holds(S_IFREG)) return place;
        errno = ENOENT;
        target = place->holds(S_IFLNK) ? linkTarget(*place) : std::nullopt;
    }
    errno = ELOOP;
    return std::nullopt;
}

std::optional<std::string> AtomicWriter::linkTarget(const Place& link) {
    std::array<char, PATH_MAX> target;
    const ssize_t length = uninterrupted(
        [&] { return _calls.readLink(link.folder.get(), link.name.c_str(), target.data(), target.size()); });
    if (length < 0) return std::nullopt;
    return std::string{target.data(), static_cast<std::size_t>(length)};
}

Descriptor AtomicWriter::openFolder(std::string_view path) {
    return openConfined(_calls, _root, path, O_RDONLY | O_DIRECTORY);
}

Descriptor AtomicWriter::openOrMakeFolder(std::string_view path) {
    Descriptor folder = openFolder(path);
    if (folder.isOpen() || errno != ENOENT) return folder;
    folder = openFolder("/");
    std::size_t begin = path.find_first_not_of('/');
    while (folder.isOpen() && begin < path.size()) {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        folder = openOrMakeChild(folder, path.substr(0, end), std::string{path.substr(begin, end - begin)});
        begin = path.find_first_not_of('/', end);
    }
    return folder;
}

Descriptor AtomicWriter::openOrMakeChild(const Descriptor& parent, std::string_view path, const std::string& name) {
    Descriptor folder = openFolder(path);
    if (folder.isOpen() || errno != ENOENT || !makeFolder(parent, name)) return folder;
    return openFolder(path);
}

bool AtomicWriter::makeFolder(const Descriptor& parent, const std::string& name) {
    if (uninterrupted([&] { return _calls.makeFolder(parent.get(), name.c_str(), newFolderMode); }) != 0) {
        return errno == EEXIST;
    }
    constexpr int flags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW;
    const Descriptor made = openEntry(_calls, parent, name, flags);
    // The process's own mask must not keep the phone's other programs out.
    return made.isOpen() && giveMode(_calls, made, newFolderMode) && synchroniseFolder(parent);
}

// Some file systems have nothing to synchronise in a folder and say so.
bool AtomicWriter::synchroniseFolder(const Descriptor& folder) {
    return synchroniseFile(_calls, folder) || errno == EINVAL || errno == ENOTSUP;
}

bool AtomicWriter::replace(const Place& place, std::string_view contents) {
    if (place.holds(S_IFDIR)) {
        errno = EISDIR;
        return check(false, "cannot replace it");
    }
    removeAbandonedTemporaries(_calls, place.folder, place.name);

    const bool keeps = place.holds(S_IFREG);
    const mode_t mode = keeps ? place.old->st_mode & permissionBits : newFileMode;
    TemporaryFile temporary{_calls, place.folder, place.name};
    if (!check(temporary.create(mode), "cannot make a temporary file beside it")) return false;
    if (!check(temporary.fill(contents), "cannot write the temporary file beside it")) return false;
    // The owner first: giving a file away may take permissions from it.
    const bool owned = !keeps || temporary.setOwner(place.old->st_uid, place.old->st_gid);
    return check(owned, "cannot give the temporary file beside it its owner") &&
           check(temporary.setMode(mode), "cannot give the temporary file beside it its permissions") &&
           check(temporary.synchronise(), "cannot make the temporary file beside it durable") &&
           check(temporary.publish(), "cannot put the new file in its place") &&
           check(synchroniseFolder(place.folder), "it is written, but its name may not outlast a crash");
}

}  // namespace hosts
