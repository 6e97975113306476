// SPDX-License-Identifier: MIT
#include "hosts/phones/far/sftp_session.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include "hosts/system/error_text.h"

namespace hosts {
namespace {

using platform::Done;
using platform::Problem;
using platform::Result;
using sftp::Reply;
using sftp::Request;
using sftp::Type;

// Enough to hide the way there and back where some thousand files are looked at.
constexpr std::size_t mostUnderWay = 2048;
constexpr std::size_t mostWaitingBytes = std::size_t{1} << 20;
constexpr const char* isAwake = "; is the phone awake?";
// What the programs ask for at most, whatever a server is ready to give.
constexpr std::uint64_t mostAtOnce = std::uint64_t{128} << 10;
constexpr std::uint64_t leastAtOnce = std::uint64_t{4} << 10;

// The last thing said, which is why there is nothing else.
std::string lastLine(std::string text) {
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r'))
        text.pop_back();
    return text.substr(text.rfind('\n') + 1);
}

}  // namespace

std::string reasonOf(const Reply& reply) {
    switch (reply.status) {
        case sftp::noSuchFile:
            return errorText(ENOENT);
        case sftp::permissionDenied:
            return errorText(EACCES);
        case sftp::unsupported:
            return "the phone's SFTP server cannot do that";
        default:
            break;
    }
    return reply.text.empty() || reply.text == "Failure" ? "the phone's SFTP server refused it" : reply.text;
}

Result<std::unique_ptr<SftpSession>> SftpSession::open(PipedProcess process, const Deadline& deadline) {
    std::unique_ptr<SftpSession> session(new SftpSession(std::move(process)));
    if (auto greeted = session->greet(deadline); !greeted) return std::move(greeted).error();
    if (auto limits = session->askLimits(); !limits) return std::move(limits).error();
    return session;
}

Result<Done> SftpSession::greet(const Deadline& deadline) {
    constexpr std::string_view firstWord("\0\0\0\5\1\0\0\0\3", 9);
    _out = firstWord;
    for (std::string came;; came.clear()) {
        const PipedProcess::Came what = _process.exchange(_out, came, deadline);
        _stream.append(came);
        auto greeting = _stream.takeGreeting();
        if (!greeting) return lost(greeting.error().reason + ": " + lastLine(_stream.foreword()));
        if (*greeting) {
            _extensions = std::move((*greeting)->extensions);
            return Done();
        }
        if (what == PipedProcess::Came::nothing) return unanswered();
        if (what == PipedProcess::Came::stopped) return lost(stoppedWaiting);
        if (what == PipedProcess::Came::end) {
            const std::string complaint = _process.complaints();
            return lost(complaint.empty() ? "nothing answers there: " + lastLine(_stream.foreword()) : complaint);
        }
    }
}

Result<Done> SftpSession::askLimits() {
    if (!offers(sftp::limits)) return Done();
    auto reply = exchange(Request(Type::extended).text(sftp::limits));
    if (!reply) return std::move(reply).error();
    constexpr std::size_t numbers = 4;
    const auto told = sftp::wideNumbersIn(*reply, numbers);
    if (told.empty()) return Done();
    _readLimit = static_cast<std::uint32_t>(std::clamp(told[1], leastAtOnce, mostAtOnce));
    _writeLimit = static_cast<std::uint32_t>(std::clamp(told[2], leastAtOnce, mostAtOnce));
    return Done();
}

bool SftpSession::offers(std::string_view extension) const {
    return std::ranges::any_of(_extensions, [extension](const auto& each) { return each.first == extension; });
}

void SftpSession::sendLater(const Request& request) {
    _out += request.bytes(++_lastId);
    _unminded.insert(_lastId);
}

Result<Reply> SftpSession::exchange(const Request& request) {
    auto replies = exchange(std::span(&request, 1));
    if (!replies) return std::move(replies).error();
    return std::move(replies->front());
}

Result<std::vector<Reply>> SftpSession::exchange(std::span<const Request> requests) {
    if (!_isAlive) return lost("the connection to the phone is lost");
    std::vector<Reply> replies(requests.size());
    std::size_t sent = 0;
    for (std::string came;; came.clear()) {
        while (sent < requests.size() && _awaited.size() < mostUnderWay && _out.size() < mostWaitingBytes) {
            _awaited.emplace(++_lastId, &replies[sent]);
            _out += requests[sent++].bytes(_lastId);
        }
        if (_awaited.empty()) return replies;
        const PipedProcess::Came what = _process.exchange(_out, came, answerPatience);
        _stream.append(came);
        if (auto taken = takeReplies(); !taken) return std::move(taken).error();
        if (what == PipedProcess::Came::nothing) return unanswered();
        if (what == PipedProcess::Came::stopped) return lost(stoppedWaiting);
        if (what == PipedProcess::Came::end && !_awaited.empty()) {
            const std::string complaint = lastLine(_process.complaints());
            return lost("the connection to the phone is lost" + (complaint.empty() ? "" : ": " + complaint));
        }
    }
}

Result<Done> SftpSession::takeReplies() {
    for (;;) {
        auto packet = _stream.takePacket();
        if (!packet) return lost(packet.error().reason);
        if (!*packet) return Done();
        auto reply = sftp::readReply(**packet);
        if (!reply) return lost("the SFTP server's answer is none");
        const auto awaited = _awaited.find(reply->id);
        if (awaited != _awaited.end()) {
            *awaited->second = *std::move(reply);
            _awaited.erase(awaited);
        } else if (_unminded.erase(reply->id) == 0) {
            return lost("the SFTP server answers what it has not been asked");
        }
    }
}

Problem SftpSession::lost(std::string reason) {
    _isAlive = false;
    _awaited.clear();
    return {.reason = std::move(reason), .isPassing = true};
}

Problem SftpSession::unanswered() {
    return lost("no answer for " + std::to_string(answerPatience.count()) + " seconds" + isAwake);
}

}  // namespace hosts
