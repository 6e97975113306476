// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "hosts/session/composers.h"
#include "hosts/session/device_shape.h"
#include "hosts/session/page_services.h"
#include "hosts/session/services.h"
#include "platform/list/page_controller.h"
#include "platform/services/platform.h"
#include "platform/services/preference_access.h"

namespace hosts {

/// A Settings application's process as the pane sees it: its classes, its system image, its services
/// and its device. It loads the pane from its bundle and knows nothing of it but what the bundle's
/// Info.plist says.
///
/// What the user or the outside does, and all that follows from it until the outcome is drawn or answered, is a turn:
/// the program closes it with `drawn`.
class SettingsSession {
public:
    /// Loads the pane's bundle. A problem when it is missing or broken.
    static platform::Result<std::unique_ptr<SettingsSession>> load(const SessionServices& services,
                                                                   const std::string& systemImage,
                                                                   const DeviceShape& shape);

    /// A new root page, named as the bundle's entry in Settings is. A problem when the bundle's principal class is no
    /// page.
    platform::Result<std::shared_ptr<platform::PSViewController>> makeRootPage();

    /// The pane's settings by name. A problem when the bundle offers none.
    platform::Result<std::shared_ptr<platform::PreferenceAccess>> preferenceAccess();

    platform::Platform& platform() { return _platform; }

    /// The turn is over: what it has read is dropped, but for the note of what is on the screen now. Whether it has
    /// read anything.
    bool drawn();

    /// The paths of the files that the pane keeps; none for a pane that does not tell.
    std::vector<std::string> observedFiles();

    /// Lets a page see what other programs have changed, by its own rules for appearing: rows are greyed, come and go.
    /// What it would repair, it repairs in memory alone, so that two programs that look never answer each other's
    /// changes. Rows that show a value are the host's to produce again.
    void bringUpToDate(platform::UIViewController& page);

    /// Takes back the last turn that is neither an undo nor undone, and posts the notifications that follow; `redo`
    /// takes back the last undo that nothing new has followed. Each is a turn of its own, whichever program made the
    /// one that it is about, and gives a sentence for the user. Pages know nothing of it.
    platform::Result<std::string> undo();
    platform::Result<std::string> redo();

    /// Whether one of the files holds something else than what was drawn of it last. A file of which nothing has been
    /// drawn does not count: no row depends on it.
    bool hasChangedSinceDrawn(std::span<const std::string> paths);

    /// Why defaults are on the screen in place of what one of the files may hold; nothing where each of them could be
    /// read, or is not there. Files of which nothing has been drawn do not count.
    std::optional<platform::Problem> whyDefaults(std::span<const std::string> paths);

private:
    SettingsSession(const SessionServices& services, const std::string& systemImage, const DeviceShape& shape);
    bool isOtherThanDrawn(const std::string& path);
    using ChooseTurn = std::vector<HistoryEntry> (*)(const History::Reading&);
    platform::Result<std::string> takeBack(ChooseTurn choose, const char* told, const char* nothing);

    PageServices _services;
    platform::ClassRegistry _classes;
    platform::SystemImage _system;
    Composers _composers;
    platform::Platform _platform;
    PhoneHistory* _history;
    platform::DictionaryFiles::Contents _drawn;
    std::unique_ptr<platform::NSBundle> _pane;
};

}  // namespace hosts
