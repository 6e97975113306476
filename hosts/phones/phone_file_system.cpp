// SPDX-License-Identifier: MIT
#include "hosts/phones/phone_file_system.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <exception>

#include "hosts/phones/atomic_writer.h"
#include "hosts/phones/confined_open.h"
#include "hosts/phones/folder_listing.h"
#include "hosts/system/error_text.h"

namespace hosts {

namespace {

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

std::string kindName(mode_t mode) {
    if (S_ISREG(mode)) return "a regular file";
    if (S_ISDIR(mode)) return "a folder";
    if (S_ISFIFO(mode)) return "a FIFO";
    if (S_ISSOCK(mode)) return "a socket";
    return "a device";
}

PhoneFileSystem::FileKind kindOf(mode_t mode) {
    if (S_ISREG(mode)) return PhoneFileSystem::FileKind::regularFile;
    if (S_ISDIR(mode)) return PhoneFileSystem::FileKind::folder;
    return PhoneFileSystem::FileKind::other;
}

// Sandboxes that do not know the call may refuse it with EPERM.
std::string confinementError(const std::string& folder, int error) {
    if (error == ENOSYS || error == EPERM) {
        return "cannot keep look-ups inside " + folder +
               ": the system call openat2 is missing (it needs Linux 5.6 or later)";
    }
    return "cannot open " + folder + ": " + errorText(error);
}

}  // namespace

PhoneFileSystem::PhoneFileSystem(Descriptor root, FileCalls& calls) : _root(std::move(root)), _calls(&calls) {}

std::optional<PhoneFileSystem> PhoneFileSystem::open(const std::string& folder, std::string& error, FileCalls& calls) {
    Descriptor root{::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)};
    if (!root.isOpen()) {
        error = "cannot open the folder " + folder + ": " + errorText(errno);
        return std::nullopt;
    }
    if (!openConfined(calls, root.get(), "/", O_PATH | O_DIRECTORY).isOpen()) {
        error = confinementError(folder, errno);
        return std::nullopt;
    }
    return PhoneFileSystem{std::move(root), calls};
}

Descriptor PhoneFileSystem::openPath(std::string_view path, int flags) const {
    return openConfined(*_calls, _root.get(), path, flags);
}

bool PhoneFileSystem::readFile(std::string_view path, std::string& contents, std::size_t limit) const {
    const Descriptor file = openPath(path, O_RDONLY | O_NONBLOCK | O_NOCTTY);
    struct stat status;
    const bool read = file.isOpen() && uninterrupted([&] { return ::fstat(file.get(), &status); }) == 0 &&
                      S_ISREG(status.st_mode) && static_cast<std::uint64_t>(status.st_size) <= limit &&
                      readWhole(file.get(), static_cast<std::size_t>(status.st_size), limit, contents);
    if (!read) contents.clear();
    return read;
}

std::vector<std::string> PhoneFileSystem::listFolder(std::string_view path) const {
    return listNames(openPath(path, O_RDONLY | O_DIRECTORY)).value_or(std::vector<std::string>{});
}

PhoneFileSystem::FileKind PhoneFileSystem::fileKind(std::string_view path) const {
    const Descriptor file = openPath(path, O_PATH);
    struct stat status;
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0) return FileKind::nothing;
    return kindOf(status.st_mode);
}

std::optional<std::string> PhoneFileSystem::whyUnread(std::string_view path, std::size_t limit) const {
    const Descriptor thing = openPath(path, O_PATH);
    struct stat status;
    if (!thing.isOpen() || ::fstat(thing.get(), &status) != 0) return whyUnreached(path);
    if (!S_ISREG(status.st_mode)) return "it is " + kindName(status.st_mode) + ", not a regular file";
    if (static_cast<std::uint64_t>(status.st_size) > limit) {
        return "it holds " + std::to_string(status.st_size) + " bytes, and at most " + std::to_string(limit) +
               " are read";
    }
    if (!openPath(path, O_RDONLY | O_NONBLOCK | O_NOCTTY).isOpen()) return errorText(errno);
    return "it cannot be read";
}

std::optional<std::string> PhoneFileSystem::whyUnlisted(std::string_view path) const {
    const Descriptor thing = openPath(path, O_PATH);
    struct stat status;
    if (!thing.isOpen() || ::fstat(thing.get(), &status) != 0) return whyUnreached(path);
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

bool PhoneFileSystem::writeFileAtomically(std::string_view path, std::string_view contents) {
    const auto failure = AtomicWriter{*_calls, _root.get()}.write(path, contents);
    _lastError.clear();
    if (failure) {
        _lastError = "cannot write " + std::string{path} + ": " + failure->step + ": " + errorText(failure->error);
    }
    return !failure;
}

}  // namespace hosts
