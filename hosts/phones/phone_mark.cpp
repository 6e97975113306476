// SPDX-License-Identifier: MIT
#include "hosts/phones/phone_mark.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/vfs.h>

#include <cstring>
#include <fstream>
#include <sstream>

namespace hosts {
namespace {

constexpr const char* deviceIdentifier = "UniqueDeviceID";

// "NUMBER … - TYPE SOURCE OPTIONS", as the table of mounts has it.
std::string typeAndSource(const std::string& mount) {
    const std::size_t separator = mount.find(" - ");
    if (separator == std::string::npos) return {};
    std::istringstream rest(mount.substr(separator + 3));
    std::string type;
    std::string source;
    rest >> type >> source;
    return type + " " + source;
}

std::string mountOf(int root) {
    struct statx status {};
    if (::statx(root, "", AT_EMPTY_PATH, STATX_MNT_ID, &status) != 0 || (status.stx_mask & STATX_MNT_ID) == 0)
        return {};
    const std::string number = std::to_string(status.stx_mnt_id) + " ";
    std::ifstream table("/proc/self/mountinfo");
    for (std::string line; std::getline(table, line);) {
        if (line.starts_with(number)) return typeAndSource(line);
    }
    return {};
}

std::string fileSystemOf(int root) {
    struct statfs system {};
    if (::fstatfs(root, &system) != 0) return {};
    std::uint64_t number = 0;
    static_assert(sizeof number == sizeof system.f_fsid);
    std::memcpy(&number, &system.f_fsid, sizeof number);
    return number == 0 ? mountOf(root) : std::to_string(number);
}

}  // namespace

std::string phoneMark(int root, platform::DeviceQuery& device) {
    const auto identifier = device.copyAnswer(deviceIdentifier);
    const std::string* const text = identifier ? identifier->string() : nullptr;
    return fileSystemOf(root) + "\n" + (text ? *text : std::string());
}

}  // namespace hosts
