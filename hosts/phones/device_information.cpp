// SPDX-License-Identifier: MIT
#include "hosts/phones/device_information.h"

#include <sys/statvfs.h>

#include <cerrno>

#include "hosts/phones/disk_usage.h"
#include "hosts/phones/fault_place.h"
#include "hosts/system/error_text.h"
#include "hosts/system/named_file.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/system_file.h"

namespace hosts {

namespace {

using platform::Problem;
using platform::Result;

constexpr std::string_view systemVersionFile = "/System/Library/CoreServices/SystemVersion.plist";

// Where a property list is wrong, as editors and compilers say it.
Problem faultIn(const std::string& path, const platform::PropertyListError& error) {
    return {{}, path + (error.line > 0 ? ":" : ": ") + faultPlace(error), error.reason};
}

Result<platform::Dictionary> readList(const std::string& path, std::string_view bytes) {
    const platform::PropertyListReading reading = platform::readPropertyList(bytes);
    if (!reading) return faultIn(path, reading.error);
    if (reading.value->dictionary() != nullptr) return *reading.value->dictionary();
    return Problem{path, {}, "the root is no dictionary"};
}

Result<std::string> readUserFile(const std::string& path) {
    if (const auto thing = namedInPlaceOfFile(path)) return Problem{path, {}, "it is " + *thing + ", not a file"};
    errno = 0;
    auto bytes = platform::readSystemFile(path, DeviceInformation::fileLimit + 1);
    if (!bytes) return Problem{path, "cannot read", errno == 0 ? "" : errorText(errno)};
    if (bytes->size() > DeviceInformation::fileLimit) {
        return Problem{path, {}, "too large for a list of device information"};
    }
    return *std::move(bytes);
}

// Of the file system that the folder lies on.
std::optional<platform::Dictionary> diskUsageOf(const std::string& folder) {
    struct statvfs status;
    if (::statvfs(folder.c_str(), &status) != 0) return std::nullopt;
    return diskUsage({status.f_frsize, status.f_blocks, status.f_bfree, status.f_bavail});
}

}  // namespace

Result<platform::Done> DeviceInformation::useFile(const std::string& path) {
    if (path.empty()) return platform::Done();
    const auto bytes = readUserFile(path);
    if (!bytes) return bytes.error();
    auto list = readList(path, *bytes);
    if (!list) return list.error();
    _userList = *std::move(list);
    return platform::Done();
}

std::optional<platform::Value> DeviceInformation::copyAnswer(std::string_view key) {
    auto answer = listedAnswer(key);
    if (answer) return answer;
    if (key == "ProductVersion") return phoneFileEntry(systemVersionFile, key);
    if (key != "DiskUsage") return std::nullopt;
    auto usage = diskUsageOf(_phoneFolder);
    return usage ? std::optional{platform::Value{*std::move(usage)}} : std::nullopt;
}

std::optional<platform::Value> DeviceInformation::listedAnswer(std::string_view key) const {
    if (!_userList) return phoneFileEntry(phoneFile, key);
    return _userList->valueForKey(key);
}

std::optional<platform::Value> DeviceInformation::phoneFileEntry(std::string_view path, std::string_view key) const {
    if (!_kept) {
        const auto list = readPhoneFile(path);
        return list ? list->valueForKey(key) : std::nullopt;
    }
    auto kept = _kept->find(path);
    if (kept == _kept->end()) kept = _kept->emplace(path, readPhoneFile(path)).first;
    return kept->second ? kept->second->valueForKey(key) : std::nullopt;
}

std::optional<platform::Dictionary> DeviceInformation::readPhoneFile(std::string_view path) const {
    std::string bytes;
    if (!_files.readFile(path, bytes, fileLimit)) return std::nullopt;
    const platform::PropertyListReading reading = platform::readPropertyList(bytes);
    const platform::Dictionary* list = reading ? reading.value->dictionary() : nullptr;
    return list ? std::optional(*list) : std::nullopt;
}

}  // namespace hosts
