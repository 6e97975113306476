// SPDX-License-Identifier: MIT
#include "hosts/phones/file_reading.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/vfs.h>
#include <time.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <exception>
#include <thread>
#include <utility>

#include "hosts/system/deadline.h"
#include "hosts/system/error_text.h"
#include "hosts/system/named_file.h"

namespace hosts {

namespace {

using platform::Problem;
using platform::Result;
using platform::Stamp;

constexpr std::chrono::seconds longestLease{1};
constexpr std::chrono::milliseconds leasePeriod{10};

constexpr std::int64_t nanoseconds = 1'000'000'000;
// Files are stamped with the time of the last tick of the kernel's clock, of which there are a hundred a second at
// least.
constexpr std::int64_t longestTick = nanoseconds / 50;

constexpr unsigned fuseMagic = 0x65735546;

std::int64_t inNanoseconds(const timespec& time) {
    return time.tv_sec * nanoseconds + time.tv_nsec;
}

bool isSettled(int file, const struct stat& status) {
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME_COARSE, &now);
    return inNanoseconds(now) - inNanoseconds(status.st_ctim) > longestTick && isFileSystemOfKernel(file);
}

Stamp stampFrom(const struct stat& status, bool isSettled) {
    return {status.st_dev,
            status.st_ino,
            static_cast<std::uint64_t>(status.st_size),
            inNanoseconds(status.st_mtim),
            inNanoseconds(status.st_ctim),
            isSettled};
}

bool statusOf(FileCalls& calls, const Descriptor& file, struct stat& status) {
    return file.isOpen() && uninterrupted([&] { return calls.status(file.get(), status); }) == 0;
}

// Makes `contents` `size` bytes long. Bytes up to `kept` matter; the rest is about to be overwritten.
bool makeRoom(std::string& contents, std::size_t size, std::size_t kept) {
    try {
        if (kept == 0 && contents.capacity() < size) contents.clear();
        contents.resize(size);
    } catch (const std::exception&) {
        errno = ENOMEM;
        return false;
    }
    return true;
}

// Reads on until nothing more comes: a file may have grown meanwhile, and some file systems remember a size of it that
// is no longer so. False, with errno set, when it cannot be read or is longer than the limit.
bool readToItsEnd(FileCalls& calls, const Descriptor& file, std::size_t expected, std::size_t limit,
                  std::string& contents) {
    if (!makeRoom(contents, expected + 1, 0)) return false;
    std::size_t got = 0;
    while (true) {
        const ssize_t count =
            uninterrupted([&] { return calls.read(file.get(), contents.data() + got, contents.size() - got); });
        if (count < 0) return false;
        if (count == 0) break;
        got += static_cast<std::size_t>(count);
        if (got > limit) {
            errno = EFBIG;
            return false;
        }
        if (got == contents.size() && !makeRoom(contents, std::min(limit, 2 * got) + 1, got)) return false;
    }
    contents.resize(got);
    return true;
}

// What the file is, or who may read it, stays so until somebody does something about it. Of any other reason that is
// not known.
bool lasts(int error) {
    switch (error) {
        case ENOENT:
        case ENOTDIR:
        case EISDIR:
        case EACCES:
        case EPERM:
        case ELOOP:
        case EXDEV:
        case ENAMETOOLONG:
        case EINVAL:
        case ENXIO:
        case EFBIG:
        case EOVERFLOW:
            return true;
        default:
            return false;
    }
}

std::string reasonOf(int error) {
    if (error == EAGAIN) return "another program holds a lease on it";
    if (error == EIO) return errorText(error) + "; if that stays so, rename the file by hand to start anew";
    return errorText(error);
}

long kindOfFileSystem(int file) {
    struct statfs system {};
    return uninterrupted([&] { return ::fstatfs(file, &system); }) == 0 ? system.f_type : 0;
}

}  // namespace

int readingFlags() {
    return O_RDONLY | O_NONBLOCK | O_NOCTTY;
}

Descriptor openToRead(const std::function<Descriptor()>& open) {
    const Deadline deadline{longestLease};
    while (true) {
        Descriptor file = open();
        if (file.isOpen() || errno != EAGAIN || deadline.left() == 0) return file;
        std::this_thread::sleep_for(leasePeriod);
    }
}

Result<Stamp> readOpened(FileCalls& calls, const Descriptor& file, std::string_view path, std::string& contents,
                         std::size_t limit, std::optional<struct stat>* told) {
    const auto failed = [&](Problem problem) {
        contents.clear();
        return problem;
    };
    // What was opened is there, whatever a file system says that replaces it just then.
    const auto unread = [&](int error) {
        Problem problem = readingProblem(path, error);
        problem.isPassing = problem.isPassing || error == ENOENT;
        return failed(std::move(problem));
    };
    struct stat status {};
    if (!statusOf(calls, file, status)) return unread(errno);
    if (told != nullptr) *told = status;
    if (!S_ISREG(status.st_mode)) return failed({std::string(path), "cannot read", notAFile(status.st_mode)});
    const auto size = static_cast<std::uint64_t>(status.st_size);
    if (size > limit) return failed({std::string(path), "cannot read", tooLarge(size, limit)});
    const Stamp stamp = stampFrom(status, isSettled(file.get(), status));
    if (!readToItsEnd(calls, file, size, limit, contents)) return unread(errno);
    return stamp;
}

std::optional<bool> holdsJust(FileCalls& calls, const Descriptor& file, std::string_view contents) {
    std::array<char, 65536> piece;
    while (true) {
        const ssize_t count = uninterrupted([&] { return calls.read(file.get(), piece.data(), piece.size()); });
        if (count < 0) return std::nullopt;
        if (count == 0) return contents.empty();
        const std::string_view got{piece.data(), static_cast<std::size_t>(count)};
        if (!contents.starts_with(got)) return false;
        contents.remove_prefix(got.size());
    }
}

Problem readingProblem(std::string_view path, int error) {
    return {std::string(path), "cannot read", reasonOf(error), !lasts(error)};
}

Result<Stamp> stampOf(FileCalls& calls, const Descriptor& file, std::string_view path) {
    struct stat status {};
    if (!statusOf(calls, file, status)) return readingProblem(path, errno);
    if (!S_ISREG(status.st_mode)) return Problem{std::string(path), "cannot read", notAFile(status.st_mode)};
    return stampFrom(status, false);
}

std::string notAFile(mode_t mode) {
    return "it is " + kindName(mode) + ", not a regular file";
}

std::string tooLarge(std::uint64_t size, std::size_t limit) {
    return "it holds " + std::to_string(size) + " bytes, and at most " + std::to_string(limit) + " are read";
}

bool isFileSystemOfKernel(int file) {
    switch (static_cast<unsigned>(kindOfFileSystem(file))) {
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

bool isFileSystemInMemory(int file) {
    return static_cast<unsigned>(kindOfFileSystem(file)) == TMPFS_MAGIC;
}

bool isFileSystemOfProgram(int file) {
    return static_cast<unsigned>(kindOfFileSystem(file)) == fuseMagic;
}

}  // namespace hosts
