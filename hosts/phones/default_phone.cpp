// SPDX-License-Identifier: MIT
#include "hosts/phones/default_phone.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "hosts/system/descriptor.h"
#include "hosts/system/error_text.h"
#include "hosts/system/new_file.h"
#include "hosts/system/state_folder.h"

namespace hosts {

namespace {

namespace fs = std::filesystem;
using platform::Problem;
using platform::Result;

// A copy under way is a sibling of the phone's folder named ".phone.XXXXXX".
constexpr std::string_view copyPrefix = ".phone.";

// What the rules for the user's data folder ask of one that has to be made.
constexpr fs::perms privateFolder = fs::perms::owner_all;

[[noreturn]] void raise(const char* doing, const fs::path& path, int error) {
    throw fs::filesystem_error{doing, path, std::error_code{error, std::generic_category()}};
}

void synchronise(const fs::path& path) {
    const Descriptor file{::open(path.c_str(), O_RDONLY | O_CLOEXEC)};
    if (!file.isOpen() || ::fsync(file.get()) != 0) raise("cannot make durable", path, errno);
}

void makeFolders(const fs::path& folder) {
    std::error_code failure;
    if (!makePrivateFolders(folder, failure)) throw fs::filesystem_error{"cannot make", folder, failure};
}

// The sample may be installed read-only; the phone is the user's to change.
void copyFile(const fs::path& from, const fs::path& to) {
    fs::copy_file(from, to);
    fs::permissions(to, fs::perms::owner_read | fs::perms::owner_write, fs::perm_options::add);
    synchronise(to);
}

void copyEntry(const fs::directory_entry& entry, const fs::path& to) {
    if (entry.is_symlink()) {
        fs::copy_symlink(entry.path(), to);
    } else if (entry.is_directory()) {
        fs::create_directory(to);
    } else if (entry.is_regular_file()) {
        copyFile(entry.path(), to);
    }
}

void copyContents(const fs::path& from, const fs::path& to) {
    for (const auto& entry : fs::recursive_directory_iterator{from}) {
        copyEntry(entry, to / entry.path().lexically_relative(from));
    }
}

// Names last when the folder that holds them has been synchronised; files see to their own content.
void synchroniseFolders(const fs::path& top) {
    for (const auto& entry : fs::recursive_directory_iterator{top}) {
        if (!entry.is_symlink() && entry.is_directory()) synchronise(entry.path());
    }
    synchronise(top);
}

// A folder that goes with this object, unless it has been given another name before.
class TemporaryFolder {
public:
    explicit TemporaryFolder(const fs::path& parent) : _path((parent / copyPrefix).string() + "XXXXXX") {
        if (::mkdtemp(_path.data()) == nullptr) raise("cannot make a folder in", parent, errno);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        fs::remove_all(_path, ignored);
    }

    const std::string& path() const { return _path; }

private:
    std::string _path;
};

// Whoever holds the lock on the folder is the only one at work in it: what other copies are there
// were left by processes that died.
void removeAbandonedCopies(const fs::path& parent) {
    for (const auto& entry : fs::directory_iterator{parent}) {
        if (entry.path().filename().string().starts_with(copyPrefix)) fs::remove_all(entry.path());
    }
}

bool lock(const Descriptor& folder) {
    return uninterrupted([&] { return ::flock(folder.get(), LOCK_EX); }) == 0;
}

// Gives the copy its name, unless somebody else has been quicker.
void publish(const fs::path& copy, const fs::path& phone) {
    int result = ::renameat2(AT_FDCWD, copy.c_str(), AT_FDCWD, phone.c_str(), RENAME_NOREPLACE);
    if (result != 0 && errno == EINVAL) result = ::rename(copy.c_str(), phone.c_str());
    if (result != 0 && errno != EEXIST && errno != ENOTEMPTY) raise("cannot make", phone, errno);
}

// The lock keeps two processes from doing the same work and is what makes it safe to clear up. The
// copy is sound without it, on file systems that cannot lock a folder.
void makePhone(const fs::path& phone, const fs::path& sample) {
    const fs::path parent = phone.parent_path();
    makeFolders(parent);
    const Descriptor folder{::open(parent.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    if (!folder.isOpen()) raise("cannot open", parent, errno);
    const bool alone = lock(folder);
    if (fs::exists(phone)) return;
    if (alone) removeAbandonedCopies(parent);

    const TemporaryFolder copy{parent};
    copyContents(sample, copy.path());
    fs::permissions(copy.path(), fs::status(sample).permissions() | privateFolder);
    synchroniseFolders(copy.path());
    publish(copy.path(), phone);
    synchronise(parent);
}

}  // namespace

Result<std::string> defaultPhonePath() {
    auto folder = dataFolder();
    if (!folder) return Problem{{}, "cannot tell where the default phone is", std::move(folder).error().reason};
    return std::move(*folder).append("/phone");
}

Result<platform::Done> ensurePhone(const std::string& phone, const std::string& sample) {
    std::error_code ignored;
    if (fs::is_directory(phone, ignored)) return platform::Done();
    try {
        makePhone(phone, sample);
    } catch (const fs::filesystem_error& failure) {
        return Problem{phone, "cannot make the phone", failure.path1().string() + ": " + failure.code().message()};
    }
    if (fs::is_directory(phone, ignored)) return platform::Done();
    return Problem{.reason = phone + " is not a folder"};
}

}  // namespace hosts
