// SPDX-License-Identifier: MIT
#include "hosts/phones/gone_phone.h"

#include <dirent.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/epoll.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <iterator>
#include <limits>

#include "hosts/phones/confined_open.h"
#include "hosts/phones/file_reading.h"
#include "hosts/system/error_text.h"

namespace hosts {
namespace {

constexpr const char* mountTable = "/proc/self/mountinfo";
constexpr const char* deleted = "has been deleted";

// What a mount answers whose other end is lost.
constexpr int lostErrors[] = {ECONNABORTED, EHOSTDOWN, EIO, ENODEV, ENOTCONN, ESHUTDOWN, ESTALE, ETIMEDOUT};

std::optional<std::string> gone(int error) {
    if (error == ENOENT) return deleted;
    if (std::ranges::find(lostErrors, error) == std::end(lostErrors)) return std::nullopt;
    return "does not answer (" + errorText(error) + ")";
}

Descriptor openFolder(int folder, const char* name, int flags) {
    return Descriptor{uninterrupted([&] { return ::openat(folder, name, flags | O_DIRECTORY | O_CLOEXEC); })};
}

bool addWatch(const Descriptor& told, int folder, unsigned events) {
    const std::string name = "/proc/self/fd/" + std::to_string(folder);
    return ::inotify_add_watch(told.get(), name.c_str(), events) >= 0;
}

bool waitFor(int waiting, const Descriptor& awaited, unsigned events) {
    epoll_event event{};
    event.events = events;
    return awaited.isOpen() && ::epoll_ctl(waiting, EPOLL_CTL_ADD, awaited.get(), &event) == 0;
}

bool isListed(std::uint64_t mount) {
    constexpr auto restOfLine = std::numeric_limits<std::streamsize>::max();
    std::ifstream table(mountTable);
    for (std::uint64_t listed = 0; table >> listed; table.ignore(restOfLine, '\n')) {
        if (listed == mount) return true;
    }
    return false;
}

// What the kernel says of a folder that has been removed. One may have that name as well.
bool isNamedDeleted(int folder) {
    return machinePath(folder).ends_with(" (deleted)");
}

// Some mounts tell a link count of 0 of folders that are there. The list is sure: of one that has been deleted the
// kernel itself refuses it, which the library would take for the list's end.
std::optional<std::string> whyUnlisted(int root) {
    const Descriptor folder = openFolder(root, ".", O_RDONLY);
    if (!folder.isOpen()) return errno == EACCES && isNamedDeleted(root) ? deleted : gone(errno);
    alignas(dirent64) char entries[1024];
    if (uninterrupted([&] { return ::getdents64(folder.get(), entries, sizeof entries); }) < 0) return gone(errno);
    return std::nullopt;
}

std::optional<std::uint64_t> listedMountOf(int root) {
    struct statx status {};
    if (::statx(root, "", AT_EMPTY_PATH, STATX_MNT_ID, &status) != 0) return std::nullopt;
    if ((status.stx_mask & STATX_MNT_ID) == 0 || !isListed(status.stx_mnt_id)) return std::nullopt;
    return status.stx_mnt_id;
}

}  // namespace

std::optional<std::string> whyGone(int root) {
    struct statx status {};
    // What a mount remembers, it answers for a while after its other end is lost.
    constexpr int flags = AT_EMPTY_PATH | AT_STATX_FORCE_SYNC;
    if (uninterrupted([&] { return ::statx(root, "", flags, STATX_NLINK, &status); }) != 0) return gone(errno);
    if (status.stx_nlink == 0 || isNamedDeleted(root)) return whyUnlisted(root);
    return std::nullopt;
}

std::optional<platform::Problem> goneProblem(int root, std::string_view path, const char* step) {
    auto why = whyGone(root);
    if (!why) return std::nullopt;
    return platform::Problem{std::string(path), step, "the phone is gone: its folder " + *why, true};
}

GoneWatch::GoneWatch(int root, int waiting)
    : _root(root),
      _told(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK)),
      _mountsWait(::open(mountTable, O_RDONLY | O_CLOEXEC)),
      _mountsAsked(::open(mountTable, O_RDONLY | O_CLOEXEC)),
      _mount(listedMountOf(root)) {
    waitFor(waiting, _mountsWait, EPOLLPRI);
    _isTold = isFileSystemOfKernel(root) && waitFor(waiting, _told, EPOLLIN) && watchFolders();
}

// Of a folder that somebody has open, only the folder that it is in tells that it has been removed from there. After a
// move, that is another one.
bool GoneWatch::watchFolders() {
    const Descriptor parent = openFolder(_root, "..", O_PATH);
    return addWatch(_told, _root, IN_MOVE_SELF | IN_DELETE_SELF | IN_ATTRIB) && parent.isOpen() &&
           addWatch(_told, parent.get(), IN_DELETE | IN_MOVED_TO | IN_ONLYDIR);
}

bool GoneWatch::isDue() {
    bool isDue = !_isTold;
    alignas(inotify_event) char arrived[4096];
    while (_told.isOpen() && ::read(_told.get(), arrived, sizeof arrived) > 0)
        isDue = true;
    return isDue;
}

std::optional<std::string> GoneWatch::next() {
    if (_isOver) return std::nullopt;
    std::optional<std::string> why;
    if (isDue()) {
        why = whyGone(_root);
        _isTold = _isTold && watchFolders();
    }
    pollfd mounts{_mountsAsked.get(), POLLPRI, 0};
    const bool isTableNew = !why && _mount && ::poll(&mounts, 1, 0) > 0;
    if (isTableNew && !isListed(*_mount)) why = "is mounted no more";
    if (why) {
        _isOver = true;
        _told = {};
        _mountsWait = {};
    }
    return why;
}

}  // namespace hosts
