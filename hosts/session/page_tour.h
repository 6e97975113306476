// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "hosts/session/opened_phone.h"
#include "platform/services/file_system.h"
#include "platform/ui/view_controller.h"

namespace hosts {

/// Told of a page that is open, and of the titles of the links that lead there from the root page.
using SeePage = std::function<void(const std::vector<std::string>& titles, platform::UIViewController& page)>;

/// Opens every page that a link leads to, greyed or not, from the root page on; 200 at most. It is done in a session of
/// its own in which no file can be changed: a page that repairs as it appears repairs nothing, no notification is
/// posted, no history kept, and nobody is told what could not be read.
class PageTour {
public:
    /// Whether the applications of the phone are looked for, which takes long on a far phone or one with many. Else it
    /// has none.
    enum class Applications { left, lookedFor };

    /// The phone and the files outlive the object. Where the pane cannot be loaded, no page is seen.
    PageTour(OpenedPhone& opened, const platform::FileSystem& files, Applications applications = Applications::left);
    ~PageTour();

    /// Each time from new pages, as the files are then.
    void seeEveryPage(const SeePage& see);

private:
    struct Surroundings;

    std::unique_ptr<Surroundings> _surroundings;
};

/// One tour of the phone, whose applications are not looked for.
void seeEveryPage(OpenedPhone& opened, const SeePage& see);

/// The same of a phone that has these files.
void seeEveryPage(OpenedPhone& opened, const platform::FileSystem& files, const SeePage& see);

}  // namespace hosts
