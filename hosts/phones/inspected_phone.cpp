// SPDX-License-Identifier: MIT
#include "hosts/phones/inspected_phone.h"

#include <optional>

#include "hosts/phones/fault_place.h"
#include "platform/foundation/property_list.h"

namespace hosts {
namespace {

// Every property list that is read from a phone is to hold a dictionary.
std::optional<std::string> faultOf(std::string_view path, std::string_view contents) {
    if (!path.ends_with(".plist")) return std::nullopt;
    const platform::PropertyListReading reading = platform::readPropertyList(contents);
    if (!reading) return faultPlace(reading.error) + ": " + reading.error.reason;
    if (!reading.value->dictionary()) return "its root is no dictionary";
    return std::nullopt;
}

}  // namespace

bool InspectedPhone::readFile(std::string_view path, std::string& contents, std::size_t limit) const {
    const bool isRead = _files.readFile(path, contents, limit);
    if (!_listener) return isRead;
    if (const auto reason = isRead ? faultOf(path, contents) : _files.whyUnread(path, limit)) {
        _listener->skipped(path, *reason);
    }
    return isRead;
}

std::vector<std::string> InspectedPhone::listFolder(std::string_view path) const {
    auto names = _files.listFolder(path);
    if (_listener && names.empty()) {
        if (const auto reason = _files.whyUnlisted(path)) _listener->skipped(path, *reason);
    }
    return names;
}

bool InspectedPhone::writeFileAtomically(std::string_view path, std::string_view contents) {
    if (contents.size() > usualReadLimit) {
        _lastError = "cannot write " + std::string(path) + ": it would hold " + std::to_string(contents.size()) +
                     " bytes, and of a file that holds more than " + std::to_string(usualReadLimit) +
                     " nothing is read; the old file is left as it is";
        return false;
    }
    const bool isWritten = _files.writeFileAtomically(path, contents);
    _lastError = _files.lastError();
    return isWritten;
}

}  // namespace hosts
