// SPDX-License-Identifier: MIT
#include "hosts/phones/phone_file_system.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/vfs.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <exception>

#include "hosts/phones/atomic_writer.h"
#include "hosts/phones/confined_open.h"
#include "hosts/phones/fault_place.h"
#include "hosts/phones/folder_listing.h"
#include "hosts/system/error_text.h"
#include "platform/foundation/property_list.h"

namespace hosts {

namespace {

using platform::Problem;
using platform::Result;
using platform::Stamp;

constexpr std::int64_t nanoseconds = 1'000'000'000;
// Files are stamped with the time of the last tick of the kernel's clock, of which there are a hundred a second at
// least.
constexpr std::int64_t longestTick = nanoseconds / 50;

std::int64_t inNanoseconds(const timespec& time) {
    return time.tv_sec * nanoseconds + time.tv_nsec;
}

bool isSettled(int file, const struct stat& status) {
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME_COARSE, &now);
    return inNanoseconds(now) - inNanoseconds(status.st_ctim) > longestTick && isFileSystemOfKernel(file);
}

Stamp stampOf(const struct stat& status, bool isSettled) {
    return {status.st_dev,
            status.st_ino,
            static_cast<std::uint64_t>(status.st_size),
            inNanoseconds(status.st_mtim),
            inNanoseconds(status.st_ctim),
            isSettled};
}

std::string kindName(mode_t mode) {
    if (S_ISREG(mode)) return "a regular file";
    if (S_ISDIR(mode)) return "a folder";
    if (S_ISFIFO(mode)) return "a FIFO";
    if (S_ISSOCK(mode)) return "a socket";
    return "a device";
}

std::string notAFile(mode_t mode) {
    return "it is " + kindName(mode) + ", not a regular file";
}

std::string tooLarge(std::uint64_t size, std::size_t limit) {
    return "it holds " + std::to_string(size) + " bytes, and at most " + std::to_string(limit) + " are read";
}

bool statusOf(const Descriptor& file, struct stat& status) {
    return file.isOpen() && uninterrupted([&] { return ::fstat(file.get(), &status); }) == 0;
}

Problem unreadable(std::string_view path, std::string reason) {
    return {std::string(path), "cannot read", std::move(reason)};
}

// Makes `contents` `size` bytes long. Bytes up to `kept` matter; the rest is about to be overwritten.
bool makeRoom(std::string& contents, std::size_t size, std::size_t kept) {
    try {
        if (kept == 0 && contents.capacity() < size) contents.clear();
        contents.resize(size);
    } catch (const std::exception&) {
        return false;
    }
    return true;
}

// Asks for one byte more than the file should hold: a read that stops short of it has met the end,
// and no second one is needed to see that. A file that has grown meanwhile is read on.
bool readWhole(int file, std::size_t expected, std::size_t limit, std::string& contents) {
    if (!makeRoom(contents, expected + 1, 0)) return false;
    std::size_t got = 0;
    while (true) {
        const ssize_t count = uninterrupted([&] { return ::read(file, contents.data() + got, contents.size() - got); });
        if (count < 0) return false;
        got += static_cast<std::size_t>(count);
        if (got > limit) return false;
        if (count == 0 || got == expected) break;
        if (got == contents.size() && !makeRoom(contents, std::min(limit, 2 * got) + 1, got)) return false;
    }
    contents.resize(got);
    return true;
}

// Every property list that is read from a phone is to hold a dictionary.
std::optional<std::string> faultOf(std::string_view path, std::string_view contents) {
    if (!path.ends_with(".plist")) return std::nullopt;
    const platform::PropertyListReading reading = platform::readPropertyList(contents);
    if (!reading) return faultPlace(reading.error) + ": " + reading.error.reason;
    if (!reading.value->dictionary()) return "its root is no dictionary";
    return std::nullopt;
}

}  // namespace

bool isFileSystemOfKernel(int file) {
    struct statfs system {};
    if (uninterrupted([&] { return ::fstatfs(file, &system); }) != 0) return false;
    switch (static_cast<unsigned>(system.f_type)) {
        case BTRFS_SUPER_MAGIC:
        case EXT4_SUPER_MAGIC:
        case F2FS_SUPER_MAGIC:
        case OVERLAYFS_SUPER_MAGIC:
        case TMPFS_MAGIC:
        case XFS_SUPER_MAGIC:
            return true;
        default:
            return false;
    }
}

PhoneFileSystem::PhoneFileSystem(Descriptor root, FileCalls& calls) : _root(std::move(root)), _calls(&calls) {}

Result<PhoneFileSystem> PhoneFileSystem::open(const std::string& folder, FileCalls& calls) {
    Descriptor root{::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)};
    if (!root.isOpen()) return Problem{folder, "cannot open the folder", errorText(errno)};
    if (openConfined(calls, root.get(), "/", O_PATH | O_DIRECTORY).isOpen()) {
        return PhoneFileSystem{std::move(root), calls};
    }
    return Problem{folder, "cannot open", errorText(errno)};
}

Descriptor PhoneFileSystem::openPath(std::string_view path, int flags) const {
    return openConfined(*_calls, _root.get(), path, flags);
}

Result<Stamp> PhoneFileSystem::look(std::string_view path) const {
    const Descriptor file = openPath(path, O_PATH);
    struct stat status;
    if (!statusOf(file, status)) return unreadable(path, errorText(errno));
    if (!S_ISREG(status.st_mode)) return unreadable(path, notAFile(status.st_mode));
    return stampOf(status, false);
}

Result<Stamp> PhoneFileSystem::readFile(std::string_view path, std::string& contents, std::size_t limit) const {
    const auto failed = [&](std::string reason) {
        contents.clear();
        tellUnread(path, limit);
        return unreadable(path, std::move(reason));
    };
    const Descriptor file = openPath(path, O_RDONLY | O_NONBLOCK | O_NOCTTY);
    struct stat status;
    if (!statusOf(file, status)) return failed(errorText(errno));
    if (!S_ISREG(status.st_mode)) return failed(notAFile(status.st_mode));
    const auto size = static_cast<std::uint64_t>(status.st_size);
    if (size > limit) return failed(tooLarge(size, limit));
    const Stamp stamp = stampOf(status, isSettled(file.get(), status));
    if (!readWhole(file.get(), size, limit, contents)) return failed("it cannot be read");
    if (_tellsPassedOver) {
        if (const auto fault = faultOf(path, contents)) tellPassedOver(_listener, path, *fault);
    }
    return stamp;
}

Result<std::vector<std::string>> PhoneFileSystem::listFolder(std::string_view path) const {
    if (auto names = listNames(openPath(path, O_RDONLY | O_DIRECTORY))) return *std::move(names);
    const int error = errno;
    const auto reason = _tellsPassedOver ? whyUnlisted(path) : std::nullopt;
    if (reason) tellPassedOver(_listener, path, *reason);
    return Problem{std::string(path), "cannot list", reason.value_or(errorText(error))};
}

std::optional<std::string> PhoneFileSystem::whyUnread(std::string_view path, std::size_t limit) const {
    const Descriptor thing = openPath(path, O_PATH);
    struct stat status;
    if (!statusOf(thing, status)) return whyUnreached(path);
    if (!S_ISREG(status.st_mode)) return notAFile(status.st_mode);
    const auto size = static_cast<std::uint64_t>(status.st_size);
    if (size > limit) return tooLarge(size, limit);
    if (!openPath(path, O_RDONLY | O_NONBLOCK | O_NOCTTY).isOpen()) return errorText(errno);
    return "it cannot be read";
}

std::optional<std::string> PhoneFileSystem::whyUnlisted(std::string_view path) const {
    const Descriptor thing = openPath(path, O_PATH);
    struct stat status;
    if (!statusOf(thing, status)) return whyUnreached(path);
    if (!S_ISDIR(status.st_mode)) return "it is " + kindName(status.st_mode) + ", not a folder";
    Descriptor folder = openPath(path, O_RDONLY | O_DIRECTORY);
    if (!folder.isOpen()) return errorText(errno);
    if (listNames(std::move(folder))) return std::nullopt;
    return "it cannot be listed, or has more than " + std::to_string(mostFolderEntries) + " entries";
}

// Of a path that leads to nothing: the first step that is there, but leads no further.
std::optional<std::string> PhoneFileSystem::whyUnreached(std::string_view path) const {
    const int error = errno;
    if (error != ENOENT && error != ENOTDIR) return errorText(error);
    std::string_view reached = "/";
    for (std::size_t end = 0; end < path.size(); reached = path.substr(0, end)) {
        end = std::min(path.find('/', end + 1), path.size());
        const std::string step{path.substr(0, end)};
        if (openPath(step, O_PATH).isOpen()) continue;
        if (openPath(step, O_PATH | O_NOFOLLOW).isOpen()) return step + " is a link that leads to nothing on the phone";
        if (errno != ENOTDIR) return std::nullopt;
        struct stat status {};
        ::fstat(openPath(reached, O_PATH).get(), &status);
        return std::string{reached} + " is " + kindName(status.st_mode) + ", not a folder";
    }
    return std::nullopt;
}

void PhoneFileSystem::tellUnread(std::string_view path, std::size_t limit) const {
    if (!_tellsPassedOver) return;
    if (const auto reason = whyUnread(path, limit)) tellPassedOver(_listener, path, *reason);
}

Result<Stamp> PhoneFileSystem::changeFile(std::string_view path, const platform::Change& change) {
    std::string held;
    const Result<Stamp> before = readFile(path, held);
    Result<std::string> wanted = change(before ? std::optional<std::string_view>(held) : std::nullopt);
    if (!wanted) return std::move(wanted).error();
    if (before && *wanted == held) return before;
    if (const auto failure = AtomicWriter{*_calls, _root.get()}.write(path, *wanted)) {
        return Problem{std::string(path), "cannot write",
                       std::string(failure->step) + ": " + errorText(failure->error)};
    }
    return look(path);
}

}  // namespace hosts
