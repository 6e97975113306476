// SPDX-License-Identifier: MIT
// Whatever an SFTP server sends, while files are read and a folder is listed. The input is a row of parts, each behind
// two bytes with its length: the first is the greeting, the others are answers. Their numbers are made right: else next
// to nothing would get past them.
#include <fcntl.h>
#include <sys/socket.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/require.h"
#include "hosts/phones/far/far_files.h"
#include "hosts/phones/far/sftp_session.h"

namespace {

// What a socket holds without anybody who reads it.
constexpr std::size_t mostSent = 60'000;
constexpr std::size_t limit = 20'000;
// A part of this length at least is sent as it is, with whatever length and number it claims.
constexpr std::size_t asItIs = 0x8000;

std::string encoded(std::size_t number) {
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>(number >> shift & 0xFF);
    return bytes;
}

std::string conversation(std::string_view input) {
    std::string sent;
    for (std::size_t part = 0; input.size() >= 2; ++part) {
        const std::size_t told =
            static_cast<std::uint8_t>(input[0]) * std::size_t{256} + static_cast<std::uint8_t>(input[1]);
        input.remove_prefix(2);
        const std::string_view content = input.substr(0, told % asItIs);
        input.remove_prefix(content.size());
        if (part == 0 || told >= asItIs || content.empty()) {
            sent += content;
        } else {
            sent += encoded(content.size() + 4) + content.front() + encoded(part) + std::string(content.substr(1));
        }
    }
    sent.resize(std::min(sent.size(), mostSent));
    return sent;
}

std::array<hosts::Descriptor, 2> sockets() {
    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends) != 0) std::abort();
    return {hosts::Descriptor{ends[0]}, hosts::Descriptor{ends[1]}};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string sent = conversation({reinterpret_cast<const char*>(data), size});
    auto ends = sockets();
    if (::send(ends[1].get(), sent.data(), sent.size(), MSG_NOSIGNAL) < 0 && !sent.empty()) std::abort();
    ::shutdown(ends[1].get(), SHUT_WR);
    auto session = hosts::SftpSession::open(hosts::PipedProcess(std::move(ends[0])), std::chrono::seconds{5});
    if (!session) return 0;
    const std::vector<std::string> paths = {"/a.plist", "/b.plist"};
    for (int round = 0; round < 2 && (*session)->isAlive(); ++round) {
        const auto readings = hosts::readFarFiles(**session, paths, limit);
        if (!readings) continue;
        fuzz::require(readings->size() == paths.size(), "every file is answered for");
        for (const hosts::FarReading& reading : *readings)
            fuzz::require(reading.bytes.size() <= limit && (reading.stamp || reading.bytes.empty()),
                          "no more is read than was asked for");
    }
    static_cast<void>((*session)->exchange(hosts::sftp::onPath(hosts::sftp::Type::opendir, "/")));
    return 0;
}
