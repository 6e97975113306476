// SPDX-License-Identifier: MIT
#include "hosts/linux/temporary_file.h"

#include <fcntl.h>
#include <sys/random.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <optional>

#include "hosts/linux/folder_listing.h"

namespace hosts {

namespace {

constexpr std::string_view suffix = ".tmp";
constexpr std::size_t randomLength = 6;
// 32 of them, so that the low five bits of a random byte choose evenly.
constexpr std::string_view randomLetters = "abcdefghijklmnopqrstuvwxyz234567";
constexpr int mostAttempts = 100;

// A name near the longest that a folder takes is cut short, to leave room for the rest.
std::string temporaryPrefix(std::string_view name) {
    constexpr std::size_t added = 2 + randomLength + suffix.size();
    return "." + std::string{name.substr(0, NAME_MAX - added)} + ".";
}

std::optional<std::string> randomText() {
    std::array<unsigned char, randomLength> bytes{};
    if (::getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) return std::nullopt;
    std::string text;
    for (const unsigned char byte : bytes)
        text += randomLetters[byte % randomLetters.size()];
    return text;
}

bool isTemporaryName(std::string_view entry, std::string_view prefix) {
    if (entry.size() != prefix.size() + randomLength + suffix.size()) return false;
    if (!entry.starts_with(prefix) || !entry.ends_with(suffix)) return false;
    return entry.substr(prefix.size(), randomLength).find_first_not_of(randomLetters) == std::string_view::npos;
}

void removeIfAbandoned(FileCalls& calls, const Descriptor& folder, const std::string& entry) {
    constexpr int flags = O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_NOCTTY | O_CLOEXEC;
    const Descriptor file{calls.openIn(folder.get(), entry.c_str(), flags, 0), calls};
    struct stat status {};
    if (!file.isOpen() || calls.status(file.get(), status) != 0 || !S_ISREG(status.st_mode)) return;
    if (calls.lock(file.get()) == 0) calls.unlink(folder.get(), entry.c_str());
}

}  // namespace

TemporaryFile::~TemporaryFile() {
    discard();
}

void TemporaryFile::discard() {
    if (_file.isOpen() && !_temporaryName.empty()) _calls.unlink(_folder.get(), _temporaryName.c_str());
    _temporaryName.clear();
    _file = Descriptor{};
}

bool TemporaryFile::create(mode_t mode) {
    constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        const auto random = randomText();
        if (!random) return false;
        _temporaryName = temporaryPrefix(_name) + *random + std::string{suffix};
        _file = Descriptor{_calls.openIn(_folder.get(), _temporaryName.c_str(), flags, mode), _calls};
        if (_file.isOpen() && claim()) return true;
        if (!_file.isOpen() && errno != EEXIST && errno != EINTR) return false;
        discard();
    }
    errno = EEXIST;
    return false;
}

// Between the file's making and its locking another writer may have taken it for an abandoned one:
// then that writer has the lock, or the file has lost its name. Where there are no locks at all,
// nobody removes anything.
bool TemporaryFile::claim() {
    if (_calls.lock(_file.get()) != 0 && errno == EWOULDBLOCK) return false;
    struct stat status {};
    return _calls.status(_file.get(), status) != 0 || status.st_nlink > 0;
}

bool TemporaryFile::fill(std::string_view contents) {
    while (!contents.empty()) {
        const ssize_t written = _calls.write(_file.get(), contents.data(), contents.size());
        if (written > 0) {
            contents.remove_prefix(static_cast<std::size_t>(written));
        } else if (written == 0) {
            errno = ENOSPC;
            return false;
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

void TemporaryFile::setOwner(uid_t owner, gid_t group) {
    struct stat status {};
    if (_calls.status(_file.get(), status) == 0 && status.st_uid == owner && status.st_gid == group) return;
    _calls.changeOwner(_file.get(), owner, group);
}

void TemporaryFile::setMode(mode_t mode) {
    _calls.changeMode(_file.get(), mode);
}

bool TemporaryFile::synchronise() {
    return synchroniseFile(_calls, _file);
}

bool TemporaryFile::publish() {
    if (_calls.rename(_folder.get(), _temporaryName.c_str(), _name.c_str()) != 0) return false;
    _temporaryName.clear();
    return true;
}

bool synchroniseFile(FileCalls& calls, const Descriptor& file) {
    int result = -1;
    do {
        result = calls.synchronise(file.get());
    } while (result != 0 && errno == EINTR);
    return result == 0;
}

void removeAbandonedTemporaries(FileCalls& calls, const Descriptor& folder, std::string_view name) {
    const std::string prefix = temporaryPrefix(name);
    Descriptor listed{calls.openIn(folder.get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0), calls};
    const auto entries = listNames(std::move(listed));
    if (!entries) return;
    for (const std::string& entry : *entries) {
        if (isTemporaryName(entry, prefix)) removeIfAbandoned(calls, folder, entry);
    }
}

}  // namespace hosts
