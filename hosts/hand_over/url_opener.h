// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "hosts/hand_over/desktop.h"
#include "hosts/hand_over/xdg_programs.h"
#include "platform/services/application.h"

namespace hosts {

/// Opens addresses with the user's programs. Only the schemes that the pane and its composers use
/// are opened or said to have a program: https, tweetbot, twitter, cydia and mailto. Whatever else a
/// page may come up with could start anything.
class UrlOpener final : public platform::UIApplication {
public:
    /// Both outlive the object.
    UrlOpener(Desktop& desktop, XdgPrograms& programs) : _desktop(desktop), _programs(programs) {}

    /// Whether the desktop has a program for the URL's scheme.
    bool canOpenURL(std::string_view url) override;
    bool openURL(std::string_view url) override { return open(url).has_value(); }

    /// Hands the URL to xdg-open.
    platform::Result<platform::Done> open(std::string_view url);

private:
    Desktop& _desktop;
    XdgPrograms& _programs;
};

}  // namespace hosts
