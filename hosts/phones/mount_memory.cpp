// SPDX-License-Identifier: MIT
#include "hosts/phones/mount_memory.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <system_error>

#include "hosts/system/new_file.h"
#include "hosts/system/state_folder.h"

namespace hosts {
namespace {

namespace fs = std::filesystem;

}  // namespace

bool isMount(int folder) {
    struct statx status {};
    const bool isAnswered = ::statx(folder, "", AT_EMPTY_PATH, STATX_BASIC_STATS, &status) == 0;
    if (isAnswered && (status.stx_attributes_mask & STATX_ATTR_MOUNT_ROOT) != 0) {
        return (status.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0;
    }
    struct stat own {};
    struct stat parent {};
    return ::fstat(folder, &own) == 0 && ::fstatat(folder, "..", &parent, 0) == 0 && own.st_dev != parent.st_dev;
}

// Which folder an entry is about is what it leads to, so two that share a name are never mixed up.
std::string MountMemory::entryFor(const std::string& place) const {
    return _folder + "/" + textNumber(place);
}

bool MountMemory::has(const std::string& place) const {
    std::error_code missing;
    const auto remembered = fs::read_symlink(entryFor(place), missing);
    return !missing && remembered.native() == place;
}

platform::Result<platform::Done> MountMemory::meet(int root, const std::string& place) const {
    if (!isMount(root)) {
        if (!has(place)) return platform::Done();
        return platform::Problem{place, "cannot open the phone",
                                 "the folder was a mount when it was last opened, and is none now; mount the phone "
                                 "again, or give --create to use the folder as it is"};
    }
    std::error_code ignored;
    if (!has(place) && makePrivateFolders(_folder, ignored)) fs::create_symlink(place, entryFor(place), ignored);
    return platform::Done();
}

void MountMemory::forget(const std::string& place) const {
    std::error_code ignored;
    if (has(place)) fs::remove(entryFor(place), ignored);
}

}  // namespace hosts
