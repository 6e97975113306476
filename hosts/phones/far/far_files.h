// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/phones/far/ssh_connection.h"
#include "hosts/phones/phone_listener.h"
#include "platform/services/file_system.h"

namespace hosts {

/// A file of a far phone as it was read. What was under way when a connection broke is read again.
struct FarReading {
    platform::Result<platform::Stamp> stamp = platform::Problem{};
    std::string bytes;
    sftp::Attributes attributes;  ///< none where there is nothing
    bool isUnreadable = false;    ///< there is a regular file, but it cannot be read, now or later
};

/// What the server answers when it is asked what each of these is, one way there and back for all of them. A problem, a
/// passing one, when the connection is lost.
platform::Result<std::vector<sftp::Reply>> lookAtFarFiles(SftpSession& session, std::span<const std::string> paths);
/// Reads files of a phone that have just been looked at, all at once: two ways there and back in all, and more for
/// large ones. `looks` is what the server has answered of each. Links are the server's to follow. A problem, a passing
/// one, when the connection is lost.
platform::Result<std::vector<FarReading>> readFarFiles(SftpSession& session, std::span<const std::string> paths,
                                                       std::span<const sftp::Reply> looks, std::size_t limit);
/// The same with a look at them first, which is one way more.
platform::Result<std::vector<FarReading>> readFarFiles(SftpSession& session, std::span<const std::string> paths,
                                                       std::size_t limit);

/// The files of a phone that is reached by its address. Links lead where the phone's own system lets them, and so may
/// lead out of the folder that is the phone's root; nothing that is read can lead to this machine.
class FarFiles final : public platform::FileSystem {
public:
    /// Outlived by the connection. `place` is what the phone is known by on this machine.
    FarFiles(SshConnection& connection, std::string place) : _connection(connection), _place(std::move(place)) {}

    void tell(PhoneListener* listener, bool tellsPassedOver) {
        _listener = listener;
        _tellsPassedOver = listener != nullptr && tellsPassedOver;
    }

    using platform::FileSystem::readFile;
    platform::Result<platform::Stamp> look(std::string_view path) const override;
    platform::Result<platform::Stamp> readFile(std::string_view path, std::string& contents,
                                               std::size_t limit) const override;
    platform::Result<std::vector<std::string>> listFolder(std::string_view path) const override;
    platform::Result<platform::Stamp> changeFile(std::string_view path, const platform::Change& change) override;

    bool isFar() const override { return true; }
    bool landsTogether() const override { return true; }
    void expect(std::span<const std::string> files, std::span<const std::string> folders) const override;
    void endTurn() override;

    /// The stamps of files as they are now, one way there and back for all of them; nothing for what is not there.
    platform::Result<std::vector<std::optional<platform::Stamp>>> lookAtAll(std::span<const std::string> paths) const;

    /// Whether each file that this object has changed still holds what it has left there, by its bytes: what another
    /// program writes right behind a change may have the same size, and the protocol's times are whole seconds. False
    /// as well where that cannot be known.
    bool areAsLeft() const;

private:
    using Names = platform::Result<std::vector<std::string>>;

    std::string onHost(std::string_view path) const;
    std::vector<std::string> onHost(std::span<const std::string> paths) const;
    FarReading readNow(std::string_view path, std::size_t limit) const;
    void remember(std::string_view path, const sftp::Reply& named, const FarReading& reading) const;
    std::vector<Names> listNow(std::span<const std::string> folders) const;

    SshConnection& _connection;
    std::string _place;
    PhoneListener* _listener = nullptr;
    bool _tellsPassedOver = false;
    /// Read and listed ahead, each for who asks for it first.
    mutable std::map<std::string, FarReading, std::less<>> _expected;
    mutable std::map<std::string, Names, std::less<>> _expectedFolders;
    /// What this turn has read by itself, for the changes that follow from it.
    mutable std::map<std::string, FarReading, std::less<>> _read;
    /// What each file was left with; nothing where that is not known or large.
    std::map<std::string, std::optional<std::string>> _left;
};

/// Does something with the phone's server, and once more where the connection breaks over it. For what does not
/// matter how often it is done.
template <class Action>
auto withServer(SshConnection& connection, Action action) -> decltype(action(std::declval<SftpSession&>())) {
    for (bool isFirst = true;; isFirst = false) {
        const auto session = connection.files();
        if (!session) return session.error();
        auto result = action(**session);
        if (result || (*session)->isAlive() || !isFirst) return result;
    }
}

}  // namespace hosts
