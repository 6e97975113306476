// SPDX-License-Identifier: MIT
#include "hosts/phones/temporary_file.h"

#include <fcntl.h>
#include <sys/random.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <optional>

#include "hosts/phones/confined_open.h"
#include "hosts/phones/folder_listing.h"

namespace hosts {

namespace {

constexpr std::string_view suffix = ".tmp";
constexpr std::size_t randomLength = 6;
// 32 of them, so that the low five bits of a random byte choose evenly.
constexpr std::string_view randomLetters = "abcdefghijklmnopqrstuvwxyz234567";
constexpr int mostNames = 100;

// A name near the longest that a folder takes is cut short, to leave room for the rest.
std::string hiddenPrefix(std::string_view name, std::size_t rest) {
    return "." + std::string{name.substr(0, NAME_MAX - 2 - rest)} + ".";
}

std::string temporaryPrefix(std::string_view name) {
    return hiddenPrefix(name, randomLength + suffix.size());
}

std::optional<std::string> randomText() {
    std::array<unsigned char, randomLength> bytes{};
    const ssize_t count = uninterrupted([&] { return ::getrandom(bytes.data(), bytes.size(), 0); });
    if (count != static_cast<ssize_t>(bytes.size())) return std::nullopt;
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

bool lookAt(FileCalls& calls, const Descriptor& file, struct stat& status) {
    return uninterrupted([&] { return calls.status(file.get(), status); }) == 0;
}

bool lockFile(FileCalls& calls, const Descriptor& file) {
    return uninterrupted([&] { return calls.lock(file.get()); }) == 0;
}

void removeIfAbandoned(FileCalls& calls, const Descriptor& folder, const std::string& entry) {
    const Descriptor file = openEntry(calls, folder, entry, O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_NOCTTY);
    struct stat status {};
    if (!file.isOpen() || !lookAt(calls, file, status) || !S_ISREG(status.st_mode)) return;
    if (lockFile(calls, file)) removeEntry(calls, folder, entry);
}

}  // namespace

TemporaryFile::~TemporaryFile() {
    discard();
}

void TemporaryFile::discard() {
    if (_file.isOpen() && !_temporaryName.empty()) removeEntry(_calls, _folder, _temporaryName);
    _temporaryName.clear();
    _file = Descriptor{};
}

bool TemporaryFile::create(mode_t mode) {
    constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW;
    for (int attempt = 0; attempt < mostNames; ++attempt) {
        const auto random = randomText();
        if (!random) return false;
        _temporaryName = temporaryPrefix(_name) + *random + std::string{suffix};
        _file = openEntry(_calls, _folder, _temporaryName, flags, mode);
        if (_file.isOpen() && claim()) return true;
        if (!_file.isOpen() && errno != EEXIST) return false;
        discard();
    }
    errno = EEXIST;
    return false;
}

// Between the file's making and its locking another writer may have taken it for an abandoned one:
// then that writer has the lock, or the file has lost its name. Where there are no locks at all,
// nobody removes anything.
bool TemporaryFile::claim() {
    if (!lockFile(_calls, _file) && errno == EWOULDBLOCK) return false;
    struct stat status {};
    if (!lookAt(_calls, _file, status) || status.st_nlink > 0) return true;
    _countsNames = uninterrupted([&] { return _calls.statusIn(_folder.get(), _temporaryName.c_str(), status); }) != 0;
    return !_countsNames;
}

bool TemporaryFile::fill(std::string_view contents) {
    while (!contents.empty()) {
        const ssize_t written =
            uninterrupted([&] { return _calls.write(_file.get(), contents.data(), contents.size()); });
        if (written == 0) errno = ENOSPC;
        if (written <= 0) return false;
        contents.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

Given TemporaryFile::setOwner(uid_t owner, gid_t group) {
    struct stat status {};
    if (lookAt(_calls, _file, status) && status.st_uid == owner && status.st_gid == group) return Given::kept;
    return giveOwner(_calls, _file, owner, group);
}

Given TemporaryFile::setMode(mode_t mode) {
    return giveMode(_calls, _file, mode);
}

bool TemporaryFile::copyAttributes(const Descriptor& from) {
    return hosts::copyAttributes(_calls, from, _file);
}

bool TemporaryFile::synchronise() {
    return synchroniseFile(_calls, _file);
}

bool TemporaryFile::publish() {
    const auto rename = [&] { return _calls.rename(_folder.get(), _temporaryName.c_str(), _name.c_str()); };
    if (uninterrupted(rename) != 0) return false;
    _temporaryName.clear();
    return true;
}

bool synchroniseFile(FileCalls& calls, const Descriptor& file) {
    return uninterrupted([&] { return calls.synchronise(file.get()); }) == 0;
}

std::string asideNameOf(std::string_view name) {
    constexpr std::string_view aside = "aside";
    return hiddenPrefix(name, aside.size()).append(aside);
}

void removeAbandoned(FileCalls& calls, const Descriptor& folder, std::string_view name, bool isThere) {
    const std::string prefix = temporaryPrefix(name);
    const auto entries = listNames(openEntry(calls, folder, ".", O_RDONLY | O_DIRECTORY));
    if (!entries) return;
    for (const std::string& entry : *entries) {
        if (isTemporaryName(entry, prefix)) removeIfAbandoned(calls, folder, entry);
        if (isThere && entry == asideNameOf(name)) removeEntry(calls, folder, entry);
    }
}

void removeEntry(FileCalls& calls, const Descriptor& folder, const std::string& entry) {
    uninterrupted([&] { return calls.unlink(folder.get(), entry.c_str()); });
}

}  // namespace hosts
