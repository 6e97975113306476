// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>
#include <vector>

#include "fuzz/session/checked_phone.h"
#include "fuzz/session/session_input.h"
#include "tests/kit/screen.h"
#include "tests/kit/test_application.h"
#include "tests/kit/test_composers.h"

namespace fuzz {

/// The pane on a phone with these settings, on which four applications are installed.
class FuzzedPane {
public:
    explicit FuzzedPane(const SessionInput& input);

    /// Opens every page in turn, looks at all of it and uses every row.
    void useEverything(std::size_t firstPage);

private:
    void use(std::string_view className);
    void useRow(platform::NSIndexPath path);
    void moveSwitch(platform::PSTableCell& cell);
    void returnTo(const platform::UIViewController& page);
    void checkRows() const;
    void checkCells() const;
    std::vector<platform::NSIndexPath> paths() const;

    kit::EventLog _log;
    CheckedPhone _phone;
    kit::TestNotifyCenter _notifications{_log};
    platform::ClassRegistry _classes;
    platform::SystemImage _system{"/no/system/image", _classes};
    kit::TestApplication _application{_log};
    kit::TestDeviceQuery _deviceQuery;
    kit::TestMailService _mail;
    kit::TestPostService _posts;
    platform::Platform _services;
    kit::Screen _screen;
};

}  // namespace fuzz
