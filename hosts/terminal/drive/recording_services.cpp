// SPDX-License-Identifier: MIT
#include "hosts/terminal/drive/recording_services.h"

namespace hosts::terminal {

bool RecordingFileSystem::writeFileAtomically(std::string_view path, std::string_view contents) {
    const bool written = _files.writeFileAtomically(path, contents);
    _events.add({{"event", "write"}, {"path", path}, {"ok", written}});
    return written;
}

void RecordingNotifyCenter::postNotification(std::string_view name) {
    _events.add({{"event", "notification"}, {"name", name}});
    _center.postNotification(name);
}

bool RecordingApplication::hasProgram(std::string_view url) const {
    return _openableSchemes.contains(std::string(url.substr(0, url.find(':'))));
}

bool RecordingApplication::canOpenURL(std::string_view url) {
    const bool answer = hasProgram(url);
    _events.add({{"event", "can-open-url"}, {"url", url}, {"answer", answer}});
    return answer;
}

bool RecordingApplication::openURL(std::string_view url) {
    _events.add({{"event", "open-url"}, {"url", url}});
    return hasProgram(url);
}

}  // namespace hosts::terminal
