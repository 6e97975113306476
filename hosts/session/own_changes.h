// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "hosts/phones/history_entry.h"
#include "hosts/session/change_recorder.h"
#include "platform/foundation/result.h"
#include "platform/services/file_system.h"
#include "platform/services/notification_center.h"
#include "platform/services/preference_access.h"

namespace hosts {

/// What a change makes of a file, and what it does to it. The steps are the history's, without numbers and time.
struct OwnChange {
    platform::Dictionary content;
    std::vector<HistoryEntry> steps;
};

/// Changes the pane's files as the program's own act and not a page's, so that no repair of a page follows: in one
/// change of a file, which is in the history and followed by the file's notification.
class OwnChanges {
public:
    /// What is to become of a file. It captures by value, does nothing but answer, and may be asked again of a newer
    /// file. A problem is why the file stays as it is.
    using Make = std::function<platform::Result<OwnChange>(platform::Dictionary held)>;

    /// `files`, `notifications` and `recorder` outlive the object; `observed` tells which notification follows the
    /// change of which file.
    OwnChanges(platform::FileSystem& files, platform::DarwinNotifyCenter& notifications, ChangeRecorder& recorder,
               std::vector<platform::PreferenceAccess::ObservedFile> observed)
        : _files(files), _notifications(notifications), _recorder(recorder), _observed(std::move(observed)) {}

    /// What the change would be as things are now.
    platform::Result<OwnChange> foresee(const std::string& file, const Make& make);

    /// Makes the change, and gives what it has done. A problem when the file was not changed.
    platform::Result<std::vector<HistoryEntry>> change(const std::string& file, const Make& make);

    /// What is changed from here on belongs to another turn.
    void endTurn() { _recorder.endTurn(); }

private:
    platform::FileSystem& _files;
    platform::DarwinNotifyCenter& _notifications;
    ChangeRecorder& _recorder;
    std::vector<platform::PreferenceAccess::ObservedFile> _observed;
};

}  // namespace hosts
