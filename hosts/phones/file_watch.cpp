// SPDX-License-Identifier: MIT
#include "hosts/phones/file_watch.h"

#include <fcntl.h>
#include <sys/epoll.h>
#include <sys/inotify.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <utility>

#include "hosts/phones/confined_open.h"
#include "hosts/phones/file_reading.h"
#include "hosts/system/state_folder.h"

namespace hosts {
namespace {

constexpr std::chrono::seconds lookPeriod{1};

constexpr unsigned folderEvents = IN_CREATE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE | IN_DELETE_SELF | IN_MOVE_SELF;
constexpr unsigned fileEvents = IN_MODIFY | IN_CLOSE_WRITE | IN_ATTRIB;

Descriptor startTimer() {
    Descriptor timer{::timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK)};
    const itimerspec period{{lookPeriod.count(), 0}, {lookPeriod.count(), 0}};
    ::timerfd_settime(timer.get(), 0, &period, nullptr);
    return timer;
}

// Whether anything has arrived. What it was does not matter: the files are looked at.
bool drain(const Descriptor& from) {
    bool hasArrived = false;
    alignas(inotify_event) char arrived[4096];
    while (from.isOpen() && ::read(from.get(), arrived, sizeof arrived) > 0)
        hasArrived = true;
    return hasArrived;
}

}  // namespace

FileWatch::FileWatch(PhoneFileSystem& files, std::vector<std::string> paths)
    : _files(files), _waiting(::epoll_create1(EPOLL_CLOEXEC)), _gone(files.root(), _waiting.get()) {
    for (std::string& path : paths)
        _watched.push_back({std::move(path), {}, {}});
    if (isFileSystemOfKernel(_files.root())) _told = Descriptor{::inotify_init1(IN_CLOEXEC | IN_NONBLOCK)};
    if (!_told.isOpen() || !_gone.isTold()) _timer = startTimer();
    for (const Descriptor* descriptor : {&_told, &_timer}) {
        if (descriptor->isOpen()) waitFor(descriptor->get());
    }
    watchAll();
    lookAtAll(false);
    for (File& file : _watched)
        file.isChanged = false;
}

void FileWatch::waitFor(int descriptor) {
    epoll_event readable{};
    readable.events = EPOLLIN;
    ::epoll_ctl(_waiting.get(), EPOLL_CTL_ADD, descriptor, &readable);
}

void FileWatch::alsoWaitFor(int other) {
    _other = other;
    waitFor(other);
}

void FileWatch::waitForNoOther() {
    ::epoll_ctl(_waiting.get(), EPOLL_CTL_DEL, std::exchange(_other, -1), nullptr);
}

std::optional<std::string> FileWatch::nextGoing() {
    auto why = _gone.next();
    if (!why) return std::nullopt;
    _watched.clear();
    _told = {};
    _timer = {};
    return why;
}

std::optional<std::string> FileWatch::nextChange() {
    const bool wasTold = drain(_told);
    if (drain(_timer) || wasTold) {
        watchAll();
        lookAtAll(wasTold);
    }
    const auto changed = std::ranges::find(_watched, true, &File::isChanged);
    if (changed == _watched.end()) return std::nullopt;
    changed->isChanged = false;
    return changed->path;
}

// A file that has been replaced is another file, and a folder that was missing may be there by now.
void FileWatch::watchAll() {
    if (!_told.isOpen()) return;
    for (const File& file : _watched) {
        watchFolderOf(file.path);
        watch(file.path, O_PATH, fileEvents);
    }
}

// The folder itself or, while there is none, the nearest above it that is there.
void FileWatch::watchFolderOf(std::string path) {
    do
        path.resize(path.rfind('/'));
    while (!watch(path + "/", O_PATH | O_DIRECTORY, folderEvents) && !path.empty());
}

// False when the path leads to no such thing on the phone. The watch is put on what was found there, by way of its
// descriptor, so that nothing outside the phone is ever watched.
bool FileWatch::watch(const std::string& path, int flags, unsigned events) {
    const Descriptor thing = openConfined(FileCalls::system(), _files.root(), path, flags);
    if (!thing.isOpen()) return false;
    const std::string name = "/proc/self/fd/" + std::to_string(thing.get());
    return ::inotify_add_watch(_told.get(), name.c_str(), events) >= 0;
}

// A second change within a tick of the file system's clock leaves no other stamp, but the kernel tells of it.
void FileWatch::lookAtAll(bool wasTold) {
    for (File& file : _watched) {
        if (isOtherThanSeen(file) || (wasTold && file.stamp)) file.isChanged = true;
    }
}

bool FileWatch::isOtherThanSeen(File& file) const {
    if (!_told.isOpen()) {
        std::string contents;
        const bool isRead = _files.readFile(file.path, contents).has_value();
        const auto before = std::exchange(file.number, isRead ? std::optional(textNumber(contents)) : std::nullopt);
        return file.number != before;
    }
    const auto found = _files.look(file.path);
    const auto before = std::exchange(file.stamp, found ? std::optional(*found) : std::nullopt);
    return file.stamp && before ? !file.stamp->isSameAs(*before) : file.stamp.has_value() != before.has_value();
}

}  // namespace hosts
