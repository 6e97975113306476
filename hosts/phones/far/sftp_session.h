// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/phones/far/sftp_packet.h"
#include "hosts/system/piped_process.h"
#include "platform/foundation/result.h"

namespace hosts {

/// A conversation with an SFTP server, with many requests under way at once. Its problems are passing ones: the
/// connection is of no use any more, and what the requests that were under way have done is not known.
class SftpSession {
public:
    /// Waits for the server's greeting, as long as `deadline` says.
    static platform::Result<std::unique_ptr<SftpSession>> open(PipedProcess process, const Deadline& deadline);
    SftpSession(const SftpSession&) = delete;
    SftpSession& operator=(const SftpSession&) = delete;

    /// Sends them all and waits for their answers, which come in the order of the requests. A server carries out
    /// requests of one batch that are about one handle in their order.
    platform::Result<std::vector<sftp::Reply>> exchange(std::span<const sftp::Request> requests);
    platform::Result<sftp::Reply> exchange(const sftp::Request& request);

    /// Sent with what is exchanged next; whatever is answered makes no difference.
    void sendLater(const sftp::Request& request);

    bool offers(std::string_view extension) const;
    /// How many bytes one reading, and one writing, may ask for.
    std::uint32_t readLimit() const { return _readLimit; }
    std::uint32_t writeLimit() const { return _writeLimit; }

    /// False once the connection is of no use any more.
    bool isAlive() const { return _isAlive; }

private:
    explicit SftpSession(PipedProcess process) : _process(std::move(process)) {}
    platform::Result<platform::Done> greet(const Deadline& deadline);
    platform::Result<platform::Done> askLimits();
    platform::Result<platform::Done> takeReplies();
    platform::Problem lost(std::string reason);
    platform::Problem unanswered();

    PipedProcess _process;
    sftp::PacketStream _stream;
    std::string _out;
    std::uint32_t _lastId = 0;
    std::map<std::uint32_t, sftp::Reply*> _awaited;
    std::set<std::uint32_t> _unminded;
    std::vector<std::pair<std::string, std::string>> _extensions;
    std::uint32_t _readLimit = std::uint32_t{32} << 10;
    std::uint32_t _writeLimit = std::uint32_t{32} << 10;
    bool _isAlive = true;
};

/// The words of a server's refusal.
std::string reasonOf(const sftp::Reply& reply);

}  // namespace hosts
