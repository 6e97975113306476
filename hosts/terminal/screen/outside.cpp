// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/outside.h"

namespace hosts::terminal::screen {

bool NoticingApplication::openURL(std::string_view url) {
    const auto opened = _opener.open(url);
    if (opened) {
        _notices.say("Opened " + std::string(url));
    } else {
        _notices.warn("Not opened: " + std::string(url) + " (" + opened.error().text() + ")");
    }
    return opened.has_value();
}

Outside::Outside(ProgramContext& context, Notices& notices)
    : _context(context),
      _files(context.files),
      _notifications(context.installation.sessionBusModule()),
      _desktop(context.installation.desktopModule()),
      _opener(_desktop, _programs),
      _application(_opener, notices),
      _deviceInformation(_files, context.phoneFolder),
      _handOver(context.installation.mailModule(), _desktop, _programs, _opener) {
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
