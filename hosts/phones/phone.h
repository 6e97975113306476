// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>

#include "hosts/phones/phone_listener.h"
#include "platform/foundation/result.h"
#include "platform/services/device_query.h"
#include "platform/services/file_system.h"
#include "platform/services/notification_center.h"

namespace hosts {

/// Something that came from the phone, or from a program that works on it too.
struct PhoneEvent {
    enum class Kind {
        fileChanged,   ///< the file may hold something else than before; `name` is its path on the phone
        notification,  ///< `name` was posted, by this process perhaps
        gone,          ///< the phone is there no more; `name` says what has become of it. No file changes after that
        away,          ///< it does not answer; `name` says why. It is tried again when somebody next uses it
    };
    Kind kind;
    std::string name;

    bool isLoss() const { return kind == Kind::gone || kind == Kind::away; }
};

/// What happens to a phone from the moment at which this was made, in order.
class PhoneEvents {
public:
    virtual ~PhoneEvents() = default;

    /// Becomes readable when there may be more; whoever waits for it calls `next` until that gives nothing.
    virtual int descriptor() const = 0;

    /// The next event that has arrived; nothing when none has. Does not wait.
    virtual std::optional<PhoneEvent> next() = 0;

    /// Why no notifications come, or none any more; nothing while they do.
    virtual const std::optional<platform::Problem>& whyNoNotifications() const = 0;
};

enum class PhoneKind {
    folder,  ///< of this machine
    mount,   ///< a folder on which a phone is mounted
    ssh,     ///< reached by its address
    report,  ///< a support report in a phone's place
};

/// What a phone is known by.
struct PhoneIdentity {
    std::string place;  ///< the same by whichever path the phone is reached
    std::string name;   ///< for people
    PhoneKind kind = PhoneKind::folder;
};

/// What can be relied on with a phone. Nothing is said of what only a change would show.
struct PhonePromises {
    /// Changes are on the phone, and not in this program's memory alone.
    bool keepsChanges = true;
    /// Whoever reads a file while it is replaced finds the old one or the new one.
    std::optional<bool> replacesInOneStep = {};
    /// A change that was made outlasts a loss of power right after it.
    std::optional<bool> outlastsPowerLoss = {};
    std::optional<bool> keepsOwners = {};
    /// The phone tells of a change of a file; else the files are looked at from time to time.
    std::optional<bool> tellsChanges = {};
    /// The phone's own side sees to it that no path leads out of it.
    std::optional<bool> confinesLookUps = {};
};

/// A phone that the programs work on. All that differs between kinds of phone is behind this type; what it gives out
/// lives as long as it does. For one thread.
class Phone {
public:
    virtual ~Phone() = default;

    virtual platform::FileSystem& files() = 0;
    virtual platform::DarwinNotifyCenter& notifications() = 0;
    virtual platform::DeviceQuery& device() = 0;

    /// From here on, answers about the device come from the list in this file of this machine, in place of the phone's
    /// own. An empty path names none, and changes nothing. A problem when the file is no list of answers.
    virtual platform::Result<platform::Done> useDeviceInformation(const std::string& file) = 0;

    /// Who is told of the phone; null for nobody. Of what cannot be used on it only where `tellsPassedOver`, since
    /// finding out why costs time.
    virtual void tell(PhoneListener* listener, bool tellsPassedOver) = 0;

    /// Listens to notifications, and keeps an eye on these files of the phone, whether or not they are there yet.
    /// `names` are those that the phone's own centre is asked for, where it has to be asked for each.
    virtual std::unique_ptr<PhoneEvents> observe(std::span<const std::string> paths,
                                                 std::span<const std::string> names = {}) = 0;

    /// Waits for the answers to what has been posted; what went wrong is told to the listener. Nothing to do where a
    /// post needs none.
    virtual void settle() {}

    virtual const PhoneIdentity& identity() const = 0;
    virtual PhonePromises promises() = 0;

    /// How long the phone takes to answer, in milliseconds: it is asked, and waited for. Nothing for one that is in
    /// this machine.
    virtual std::optional<double> roundTrip() = 0;

    /// What tells it from another phone that was or will be in the same place, found out anew.
    virtual std::string mark() = 0;
};

}  // namespace hosts
