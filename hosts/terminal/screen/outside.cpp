// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/outside.h"

namespace hosts::terminal::screen {

bool NoticingApplication::openURL(std::string_view url) {
    const bool isOpened = _opener.openURL(url);
    if (isOpened) {
        _notices.say("Opened " + std::string(url));
    } else {
        _notices.warn("Not opened: " + std::string(url) + " (" + _opener.lastError() + ")");
    }
    return isOpened;
}

Outside::Outside(ProgramContext& context, Notices& notices)
    : _context(context),
      _files(context.files),
      _notifications(context.installation.sessionBusModule()),
      _desktop(context.installation.desktopModule()),
      _opener(_desktop, _programs),
      _application(_opener, notices),
      _deviceInformation(_files, context.phoneFolder),
      _mail(context.installation.mailModule(), _desktop, _programs) {
    std::string error;
    if (!_deviceInformation.useFile(context.deviceInformation, error)) notices.warn(error);
}

SessionServices Outside::services() {
    return {_files, _notifications, _application, _deviceInformation, _composers, _composers, _context.skips.get()};
}

std::optional<std::string> Outside::takeWriteProblem() {
    const bool hasFailed = _files.outcome() == WatchedWrites::Outcome::failed;
    _files.forget();
    return hasFailed ? std::optional(_context.files.lastError()) : std::nullopt;
}

}  // namespace hosts::terminal::screen
