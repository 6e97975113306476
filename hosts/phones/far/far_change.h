// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <span>
#include <string>

#include "hosts/phones/far/far_files.h"
#include "hosts/phones/phone_listener.h"
#include "platform/services/file_system.h"

namespace hosts {

/// One atomic change of a file on a far phone, as `AtomicChange` makes it in a folder: the new content is made durable
/// under a fresh name beside the old file, which is read once more right before one renaming puts the new one in its
/// place. By its bytes, since the protocol tells no inode and whole seconds.
///
/// A renaming whose answer was cut off is settled by removing the file under its fresh name: where that is removed, the
/// renaming has not happened and no longer can, and where it is not there, it has. Only then is the change made again.
class FarChange {
public:
    /// All outlive the object; the listener may be null. `place` is what the phone is known by on this machine.
    FarChange(SshConnection& connection, PhoneListener* listener, const std::string& place)
        : _connection(connection), _listener(listener), _place(place) {}

    /// `path` is the phone's own, `onHost` the same for the server. `known` is what was read there a moment ago, if it
    /// was and is no link: where that still stands it need not be read once more. The problem, if there is one; nothing
    /// also when the file held the new content already.
    std::optional<platform::Problem> make(const std::string& path, const std::string& onHost,
                                          const platform::Change& change, std::optional<FarReading> known);

private:
    enum class Step { done, failed, again, lost };

    Step tryOn(SftpSession& session, const platform::Change& change);
    Step settle(SftpSession& session);
    Step read(SftpSession& session);
    Step readAside(SftpSession& session);
    Step makeTemporary(SftpSession& session);
    /// Whether what was read before is still what its name stands for.
    bool isAsHeld(const sftp::Attributes& now) const;
    Step makeFolders(SftpSession& session);
    Step fill(SftpSession& session, const std::string& contents);
    Step checkFilled(std::span<const sftp::Reply> writes, std::span<const sftp::Reply> rest, bool isDurable);
    Step compare(SftpSession& session);
    Step keepOld(SftpSession& session);
    Step publish(SftpSession& session);
    Step publishInSteps(SftpSession& session);
    Step discard(SftpSession& session, Step step);
    Step fail(const char* step, const sftp::Reply& reply);
    Step lose(const platform::Problem& problem);
    void remark(const std::string& sentence);

    SshConnection& _connection;
    PhoneListener* _listener;
    const std::string& _place;
    std::string _path;
    std::string _named;   ///< on the host, as it was asked for
    std::string _target;  ///< where links lead from there
    std::string _temporary;
    std::string _handle;
    std::string _oldHandle;
    FarReading _held;
    std::optional<FarReading> _known;
    bool _isOfBefore = false;  ///< what is held was known, and has not been found to stand
    sftp::Attributes _given;   ///< owner and permissions of the new file
    bool _mayBeThere = false;  ///< a temporary file of ours may lie there
    bool _isRenaming = false;  ///< and may have become the file itself
    std::optional<platform::Problem> _problem;
};

}  // namespace hosts
