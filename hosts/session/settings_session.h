// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "hosts/session/composers.h"
#include "hosts/session/defaults.h"
#include "hosts/session/device_shape.h"
#include "hosts/session/own_changes.h"
#include "hosts/session/page_services.h"
#include "hosts/session/services.h"
#include "platform/list/page_controller.h"
#include "platform/services/platform.h"
#include "platform/services/preference_access.h"

namespace hosts {

struct TakeBackWords;

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
    SettingsSession(const SettingsSession&) = delete;
    SettingsSession& operator=(const SettingsSession&) = delete;
    ~SettingsSession() { land(); }

    /// A new root page, named as the bundle's entry in Settings is. A problem when the bundle's principal class is no
    /// page.
    platform::Result<std::shared_ptr<platform::PSViewController>> makeRootPage();

    /// The pane's settings by name. A problem when the bundle offers none.
    platform::Result<std::shared_ptr<platform::PreferenceAccess>> preferenceAccess();

    /// The settings beside their defaults; null where the bundle offers no settings by name.
    const Defaults* defaults();

    platform::Platform& platform() { return _platform; }

    /// What the turn has changed so far is on the phone, and the phone has been told, when this returns; of what has
    /// not come about, the listener has been told. On a phone that is near all of that has been so before.
    void land();

    /// The turn is over: it lands, and what it has read is dropped, but for the note of what is on the screen now.
    /// Whether it has read anything.
    bool drawn();

    /// The paths of the files that the pane keeps; none for a pane that does not tell.
    std::vector<std::string> observedFiles();
    /// The notifications that it posts after its writes.
    std::vector<std::string> observedNotifications();

    /// Lets a page see what other programs have changed, by its own rules for appearing: rows are greyed, come and go.
    /// What it would repair, it repairs in memory alone, so that two programs that look never answer each other's
    /// changes. Rows that show a value are the host's to produce again.
    void bringUpToDate(platform::UIViewController& page);

    /// Takes back the last turn that is neither an undo nor undone, and posts the notifications that follow; `redo`
    /// takes back the last undo that nothing new has followed, and `undoTurn` the turn of that number. Each is a turn
    /// of its own, whichever program made the one that it is about, and gives a sentence for the user; a problem, with
    /// nothing done, where a key no longer holds what it was left with. Pages know nothing of it.
    platform::Result<std::string> undo();
    platform::Result<std::string> redo();
    platform::Result<std::string> undoTurn(std::uint64_t turn);
    /// Whether there is such a turn. That it can be taken back is not said.
    bool hasTurnToUndo() const;
    bool hasTurnToRedo() const;

    /// What has been done, for the user, and the turn that it was; 0 where that is not in the history.
    struct DoneTurn {
        std::string text;
        std::uint64_t turn = 0;
    };
    /// Takes the settings out of the file, so that they are at their defaults, and posts the notification: a turn of
    /// its own, of which pages know nothing. `label` is what the user calls a setting; empty for those of a page.
    platform::Result<DoneTurn> reset(std::span<const std::string> keys, const std::string& label);
    /// Whether that would change anything.
    bool canReset(std::span<const std::string> keys);

    /// Whether one of the files holds something else than what was drawn of it last. A file of which nothing has been
    /// drawn does not count: no row depends on it.
    bool hasChangedSinceDrawn(std::span<const std::string> paths);

    /// Why defaults are on the screen in place of what one of the files may hold; nothing where each of them could be
    /// read, or is not there. Files of which nothing has been drawn do not count.
    std::optional<platform::Problem> whyDefaults(std::span<const std::string> paths);

private:
    SettingsSession(const SessionServices& services, const std::string& systemImage, const DeviceShape& shape);
    bool isOtherThanDrawn(const std::string& path);
    using ChooseTurn = std::function<std::vector<HistoryEntry>(const History::Reading&)>;
    platform::Result<std::string> takeBack(const ChooseTurn& choose, const TakeBackWords& words);
    bool hasTurn(const ChooseTurn& choose) const;
    platform::Result<OwnChanges> ownChanges();

    PageServices _services;
    platform::ClassRegistry _classes;
    platform::SystemImage _system;
    Composers _composers;
    platform::Platform _platform;
    PhoneHistory* _history;
    Phone* _phone;
    platform::DictionaryFiles::Contents _drawn;
    std::unique_ptr<platform::NSBundle> _pane;
    std::unique_ptr<Defaults> _defaults;
};

}  // namespace hosts
