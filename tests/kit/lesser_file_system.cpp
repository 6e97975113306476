// SPDX-License-Identifier: MIT
// lesser_file_system FOLDER MOUNT-POINT [QUALITY…]: mounts a folder as a file system that promises less than a local
// one, until it is unmounted. A QUALITY is one of
//
//     remembered-sizes            what was told of a file is told again until the file is opened or changed here; the
//                                 kernel remembers for an hour what it was told by looking the file up, before it
//                                 was opened
//     no-rename-over=ERROR        a renaming whose target is there fails
//     no-link-count               files tell of 0 links
//     no-owners                   no file can be given away
//     failing-fsync=ERROR         no file can be made durable
//     failing-folder-fsync=ERROR  no folder can
//     reading-fails=FILE          reading fails with EIO for as long as FILE, somewhere else, is there
//     slow=MILLISECONDS           each operation takes so long
//
// and an ERROR one of those in `errors`. Without any, nothing is remembered and all that the folder's file system
// promises is kept, but for what libfuse itself does: what is renamed over or removed while it is open goes by a
// hidden name until it is closed.
#define FUSE_USE_VERSION 31

#include <dirent.h>
#include <fcntl.h>
#include <fuse.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

namespace {

const std::map<std::string, int, std::less<>> errors{{"EEXIST", EEXIST}, {"EINVAL", EINVAL}, {"EIO", EIO},
                                                     {"ENOSPC", ENOSPC}, {"EPERM", EPERM},   {"EROFS", EROFS}};

struct Qualities {
    bool remembersSizes = false;
    bool hasLinkCount = true;
    bool hasOwners = true;
    int renameOverError = 0;
    int fsyncError = 0;
    int folderFsyncError = 0;
    std::string readingFailsFile;
    std::chrono::milliseconds slowness{0};
};

struct LesserFileSystem {
    int root = -1;
    Qualities qualities;
    std::map<std::string, struct stat, std::less<>> remembered;

    void tell(const char* path, struct stat& status) {
        if (!qualities.hasLinkCount) status.st_nlink = 0;
        if (qualities.remembersSizes && S_ISREG(status.st_mode)) remembered.insert_or_assign(path, status);
    }
    void forget(const char* path) { remembered.erase(path); }
};

// At the beginning of each operation.
LesserFileSystem& fileSystem() {
    auto& found = *static_cast<LesserFileSystem*>(fuse_get_context()->private_data);
    if (found.qualities.slowness.count() > 0) std::this_thread::sleep_for(found.qualities.slowness);
    return found;
}

const char* below(const char* path) {
    return path[1] == '\0' ? "." : path + 1;
}

int answerOf(ssize_t result) {
    return result < 0 ? -errno : static_cast<int>(result);
}

int handleOf(const fuse_file_info* info) {
    return static_cast<int>(info->fh);
}

int getAttributes(const char* path, struct stat* status, fuse_file_info* info) {
    auto& system = fileSystem();
    if (const auto found = system.remembered.find(path); found != system.remembered.end()) {
        *status = found->second;
        return 0;
    }
    const int result =
        info ? ::fstat(handleOf(info), status) : ::fstatat(system.root, below(path), status, AT_SYMLINK_NOFOLLOW);
    if (result != 0) return -errno;
    system.tell(path, *status);
    return 0;
}

int readLink(const char* path, char* target, std::size_t room) {
    const ssize_t length = ::readlinkat(fileSystem().root, below(path), target, room - 1);
    if (length >= 0) target[length] = '\0';
    return length < 0 ? -errno : 0;
}

int makeFolder(const char* path, mode_t mode) {
    return answerOf(::mkdirat(fileSystem().root, below(path), mode));
}

int removeFile(const char* path) {
    auto& system = fileSystem();
    system.forget(path);
    return answerOf(::unlinkat(system.root, below(path), 0));
}

int removeFolder(const char* path) {
    return answerOf(::unlinkat(fileSystem().root, below(path), AT_REMOVEDIR));
}

int makeLink(const char* target, const char* path) {
    return answerOf(::symlinkat(target, fileSystem().root, below(path)));
}

int renameFile(const char* from, const char* to, unsigned flags) {
    auto& system = fileSystem();
    if (flags != 0) return -EINVAL;
    const bool isOver = ::faccessat(system.root, below(to), F_OK, AT_SYMLINK_NOFOLLOW) == 0;
    if (isOver && system.qualities.renameOverError != 0) return -system.qualities.renameOverError;
    system.forget(from);
    system.forget(to);
    return answerOf(::renameat(system.root, below(from), system.root, below(to)));
}

int makeHardLink(const char* from, const char* to) {
    auto& system = fileSystem();
    return answerOf(::linkat(system.root, below(from), system.root, below(to), 0));
}

int changeMode(const char* path, mode_t mode, fuse_file_info*) {
    auto& system = fileSystem();
    system.forget(path);
    return answerOf(::fchmodat(system.root, below(path), mode, 0));
}

int changeOwner(const char* path, uid_t owner, gid_t group, fuse_file_info*) {
    auto& system = fileSystem();
    if (!system.qualities.hasOwners) return -EPERM;
    system.forget(path);
    return answerOf(::fchownat(system.root, below(path), owner, group, AT_SYMLINK_NOFOLLOW));
}

int openWith(const char* path, int flags, mode_t mode, fuse_file_info* info) {
    auto& system = fileSystem();
    const int file = ::openat(system.root, below(path), flags | O_CLOEXEC, mode);
    if (file < 0) return -errno;
    info->fh = static_cast<std::uint64_t>(file);
    struct stat status {};
    if (::fstat(file, &status) == 0) system.tell(path, status);
    return 0;
}

int openFile(const char* path, fuse_file_info* info) {
    return openWith(path, info->flags, 0, info);
}

int createFile(const char* path, mode_t mode, fuse_file_info* info) {
    return openWith(path, info->flags | O_CREAT, mode, info);
}

int truncateFile(const char* path, off_t size, fuse_file_info* info) {
    auto& system = fileSystem();
    system.forget(path);
    if (info) return answerOf(::ftruncate(handleOf(info), size));
    const int file = ::openat(system.root, below(path), O_WRONLY | O_CLOEXEC);
    if (file < 0) return -errno;
    const int result = answerOf(::ftruncate(file, size));
    ::close(file);
    return result;
}

int readFile(const char*, char* bytes, std::size_t count, off_t offset, fuse_file_info* info) {
    const std::string& failsFile = fileSystem().qualities.readingFailsFile;
    if (!failsFile.empty() && ::access(failsFile.c_str(), F_OK) == 0) return -EIO;
    return answerOf(::pread(handleOf(info), bytes, count, offset));
}

int writeFile(const char* path, const char* bytes, std::size_t count, off_t offset, fuse_file_info* info) {
    fileSystem().forget(path);
    return answerOf(::pwrite(handleOf(info), bytes, count, offset));
}

int releaseFile(const char*, fuse_file_info* info) {
    return answerOf(::close(handleOf(info)));
}

int synchroniseFile(const char*, int, fuse_file_info* info) {
    const int error = fileSystem().qualities.fsyncError;
    return error != 0 ? -error : answerOf(::fsync(handleOf(info)));
}

int synchroniseFolder(const char* path, int, fuse_file_info*) {
    auto& system = fileSystem();
    if (system.qualities.folderFsyncError != 0) return -system.qualities.folderFsyncError;
    const int folder = ::openat(system.root, below(path), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0) return -errno;
    const int result = answerOf(::fsync(folder));
    ::close(folder);
    return result;
}

int readFolder(const char* path, void* buffer, fuse_fill_dir_t fill, off_t, fuse_file_info*, fuse_readdir_flags) {
    const int folder = ::openat(fileSystem().root, below(path), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(folder < 0 ? nullptr : ::fdopendir(folder), ::closedir);
    if (!entries) return -errno;
    while (const dirent* entry = ::readdir(entries.get())) {
        if (fill(buffer, entry->d_name, nullptr, 0, fuse_fill_dir_flags{}) != 0) return -ENOMEM;
    }
    return 0;
}

int fileSystemStatus(const char*, struct statvfs* status) {
    return answerOf(::fstatvfs(fileSystem().root, status));
}

int setTimes(const char* path, const timespec times[2], fuse_file_info*) {
    auto& system = fileSystem();
    system.forget(path);
    return answerOf(::utimensat(system.root, below(path), times, AT_SYMLINK_NOFOLLOW));
}

void* initialise(fuse_conn_info*, fuse_config* config) {
    constexpr double anHour = 3600;
    LesserFileSystem& system = fileSystem();
    config->attr_timeout = system.qualities.remembersSizes ? anHour : 0;
    config->entry_timeout = 0;
    config->negative_timeout = 0;
    return &system;
}

fuse_operations operations() {
    fuse_operations all{};
    all.init = initialise;
    all.getattr = getAttributes;
    all.readlink = readLink;
    all.mkdir = makeFolder;
    all.unlink = removeFile;
    all.rmdir = removeFolder;
    all.symlink = makeLink;
    all.rename = renameFile;
    all.link = makeHardLink;
    all.chmod = changeMode;
    all.chown = changeOwner;
    all.truncate = truncateFile;
    all.open = openFile;
    all.create = createFile;
    all.read = readFile;
    all.write = writeFile;
    all.release = releaseFile;
    all.fsync = synchroniseFile;
    all.fsyncdir = synchroniseFolder;
    all.readdir = readFolder;
    all.statfs = fileSystemStatus;
    all.utimens = setTimes;
    return all;
}

// False for one that there is not.
bool setQuality(Qualities& qualities, std::string_view text) {
    const std::size_t equals = text.find('=');
    const std::string_view name = text.substr(0, equals);
    const std::string value(equals == text.npos ? "" : text.substr(equals + 1));
    const auto error = errors.find(value);
    if (name == "remembered-sizes") {
        qualities.remembersSizes = true;
    } else if (name == "no-link-count") {
        qualities.hasLinkCount = false;
    } else if (name == "no-owners") {
        qualities.hasOwners = false;
    } else if (name == "reading-fails") {
        qualities.readingFailsFile = value;
    } else if (name == "slow") {
        qualities.slowness = std::chrono::milliseconds{std::atoi(value.c_str())};
    } else if (name == "no-rename-over" && error != errors.end()) {
        qualities.renameOverError = error->second;
    } else if (name == "failing-fsync" && error != errors.end()) {
        qualities.fsyncError = error->second;
    } else if (name == "failing-folder-fsync" && error != errors.end()) {
        qualities.folderFsyncError = error->second;
    } else {
        return false;
    }
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    LesserFileSystem system;
    system.root = argc < 3 ? -1 : ::open(argv[1], O_PATH | O_DIRECTORY | O_CLOEXEC);
    if (system.root < 0) {
        std::perror(argc < 3 ? "a folder and a mount point are needed" : argv[1]);
        return 1;
    }
    for (int i = 3; i < argc; ++i) {
        if (setQuality(system.qualities, argv[i])) continue;
        std::fprintf(stderr, "%s: no such quality: %s\n", argv[0], argv[i]);
        return 1;
    }
    // In the foreground, and one operation at a time.
    std::array<std::string, 4> arguments{argv[0], argv[2], "-f", "-s"};
    std::array<char*, 5> pointers{arguments[0].data(), arguments[1].data(), arguments[2].data(), arguments[3].data(),
                                  nullptr};
    const fuse_operations all = operations();
    ::umask(0);
    return fuse_main(4, pointers.data(), &all, &system);
}
