// SPDX-License-Identifier: MIT
#include "hosts/phones/phone_file_system.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <thread>

#include "hosts/phones/atomic_change.h"
#include "hosts/phones/confined_open.h"
#include "hosts/phones/fault_place.h"
#include "hosts/phones/file_reading.h"
#include "hosts/phones/folder_listing.h"
#include "hosts/phones/gone_phone.h"
#include "hosts/phones/temporary_file.h"
#include "hosts/system/error_text.h"
#include "hosts/system/named_file.h"

namespace hosts {

namespace {

using platform::Problem;
using platform::Result;
using platform::Stamp;

constexpr std::string_view propertyListEnding = ".plist";

// A program that writes a file in place is done with it, or one write further, by then.
constexpr std::chrono::milliseconds pauseBetweenReadings{100};

constexpr std::chrono::milliseconds longerThanAnyRenaming{20};

// Every property list that is read from a phone is to hold a dictionary.
std::optional<std::string> faultOf(std::string_view path, std::string_view contents) {
    if (!path.ends_with(propertyListEnding)) return std::nullopt;
    return dictionaryFault(contents);
}

}  // namespace

PhoneFileSystem::PhoneFileSystem(Descriptor root, FileCalls& calls)
    : _root(std::move(root)), _calls(&calls), _isOfProgram(isFileSystemOfProgram(_root.get())) {}

Result<PhoneFileSystem> PhoneFileSystem::open(const std::string& folder, FileCalls& calls) {
    Descriptor root{::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)};
    if (!root.isOpen()) return Problem{folder, "cannot open the folder", errorText(errno)};
    if (openConfined(calls, root.get(), "/", O_PATH | O_DIRECTORY).isOpen()) {
        return PhoneFileSystem{std::move(root), calls};
    }
    return Problem{folder, "cannot open", errorText(errno)};
}

void PhoneFileSystem::tell(PhoneListener* listener, bool tellsPassedOver) {
    _listener = listener;
    _tellsPassedOver = listener != nullptr && tellsPassedOver;
    if (listener && !isConfinedByKernel()) {
        listener->remark(
            "this system does not keep look-ups inside the phone (openat2), so each path is walked by hand");
    }
}

bool PhoneFileSystem::isConfinedByKernel() const {
    const auto open = [&] { return _calls->openInRoot(_root.get(), "/", O_PATH | O_DIRECTORY | O_CLOEXEC); };
    return Descriptor{uninterrupted(open), *_calls}.isOpen() || errno == EAGAIN;
}

// Of a file system that is not the kernel's own, some of it only shows when a file is changed.
PhonePromises PhoneFileSystem::promises() const {
    const bool isOfKernel = isFileSystemOfKernel(_root.get());
    const auto sure = isOfKernel ? std::optional(true) : std::nullopt;
    PhonePromises promises{.replacesInOneStep = sure, .outlastsPowerLoss = sure, .keepsOwners = sure};
    if (_isOfProgram || isFileSystemInMemory(_root.get())) promises.outlastsPowerLoss = false;
    promises.tellsChanges = isOfKernel;
    promises.confinesLookUps = isConfinedByKernel();
    return promises;
}

Descriptor PhoneFileSystem::openPath(std::string_view path, int flags) const {
    return openConfined(*_calls, _root.get(), path, flags);
}

// A file system that is a program may answer that nothing is there where a file is replaced between the finding of its
// name and its opening.
Descriptor PhoneFileSystem::openFile(std::string_view path, int flags) const {
    Descriptor file = openByEitherName(path, flags);
    const bool mayBeThere = path.ends_with(propertyListEnding) && _isOfProgram;
    if (file.isOpen() || errno != ENOENT || !mayBeThere) return file;
    std::this_thread::sleep_for(longerThanAnyRenaming);
    return openByEitherName(path, flags);
}

Descriptor PhoneFileSystem::openByEitherName(std::string_view path, int flags) const {
    Descriptor file = openToRead([&] { return openPath(path, flags); });
    if (file.isOpen() || errno != ENOENT) return file;
    const std::size_t name = path.rfind('/') + 1;
    file = openPath(std::string(path.substr(0, name)) + asideNameOf(path.substr(name)), flags);
    if (!file.isOpen()) errno = ENOENT;
    return file;
}

Result<Stamp> PhoneFileSystem::look(std::string_view path) const {
    // What a program remembers of a path does not outlast the opening of the file.
    const Descriptor file = openFile(path, _isOfProgram ? readingFlags() : O_PATH);
    if (!file.isOpen()) return readingProblem(path, errno);
    return stampOf(*_calls, file, path);
}

Result<Stamp> PhoneFileSystem::readFile(std::string_view path, std::string& contents, std::size_t limit) const {
    const Descriptor file = openFile(path, readingFlags());
    const auto reading = [&]() -> Result<Stamp> {
        if (file.isOpen()) {
            auto opened = readOpened(*_calls, file, path, contents, limit);
            if (opened || !opened.error().isPassing || !_isOfProgram) return opened;
            // One that was replaced meanwhile may not be there any more for a file system that is a program.
            return readOpened(*_calls, openFile(path, readingFlags()), path, contents, limit);
        }
        const int error = errno;
        contents.clear();
        if (auto gone = goneProblem(_root.get(), path, "cannot read")) return *std::move(gone);
        return readingProblem(path, error);
    }();
    if (!_tellsPassedOver) return reading;
    const auto fault = reading ? faultOf(path, contents) : whyUnread(path, limit);
    if (fault) tellPassedOver(_listener, path, *fault);
    return reading;
}

Result<Stamp> PhoneFileSystem::readAgain(std::string_view path, std::string& contents) const {
    std::this_thread::sleep_for(pauseBetweenReadings);
    return readFile(path, contents);
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
    if (!thing.isOpen() || ::fstat(thing.get(), &status) != 0) return whyUnreached(path);
    if (!S_ISREG(status.st_mode)) return notAFile(status.st_mode);
    const auto size = static_cast<std::uint64_t>(status.st_size);
    if (size > limit) return tooLarge(size, limit);
    if (!openPath(path, readingFlags()).isOpen()) return errorText(errno);
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

Result<Stamp> PhoneFileSystem::changeFile(std::string_view path, const platform::Change& change) {
    auto problem = AtomicChange{*_calls, _root.get(), _listener}.make(path, change);
    // It is made, even where another program has replaced the file since and nothing is to be seen of it.
    if (!problem) return look(path).value_or(Stamp{});
    auto gone = goneProblem(_root.get(), path, "cannot write");
    return gone ? *std::move(gone) : *std::move(problem);
}

}  // namespace hosts
