// SPDX-License-Identifier: MIT
#include "hosts/phones/far/far_files.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "hosts/phones/far/far_change.h"
#include "hosts/phones/fault_place.h"
#include "hosts/phones/file_reading.h"
#include "hosts/system/error_text.h"

namespace hosts {
namespace {

using platform::Done;
using platform::Problem;
using platform::Result;
using platform::Stamp;
using sftp::Reply;
using sftp::Request;
using sftp::Type;

constexpr std::size_t mostFolderEntries = 262'144;
constexpr std::size_t mostExpectedBytes = std::size_t{64} << 20;
// Of many files that are read at once, so much of each at most is held together.
constexpr std::size_t longestExpected = std::size_t{128} << 10;
// So many files are read ahead in one go, of however many that are looked at.
constexpr std::size_t expectedAtOnce = 512;
// More than are changed in one turn.
constexpr std::size_t mostRemembered = 8;

Stamp stampFrom(const sftp::Attributes& attributes) {
    constexpr std::int64_t second = 1'000'000'000;
    return {.size = attributes.size.value_or(0), .modified = attributes.times ? attributes.times->second * second : 0};
}

Problem refusal(std::string_view path, const Reply& reply) {
    return {std::string(path), "cannot read", reasonOf(reply)};
}

mode_t modeOf(const sftp::Attributes& attributes) {
    return attributes.permissions.value_or(S_IFREG);
}

bool isFile(const Reply& look) {
    return look.type == Type::attrs && S_ISREG(modeOf(look.attributes));
}

// How many of these, from the first on, are read in one go.
std::size_t countAtOnce(std::span<const Reply> looks) {
    std::size_t count = 0;
    for (std::size_t toRead = 0; count < looks.size() && toRead < expectedAtOnce; ++count) {
        if (isFile(looks[count])) ++toRead;
    }
    return count;
}

/// One file on its way through the stages of a reading that many share.
struct Pending {
    std::string path;
    FarReading reading;
    std::string handle = {};
    std::uint64_t size = 0;  ///< as its stamp tells
    bool isAtEnd = false;

    void refuse(Problem problem) {
        reading.stamp = std::move(problem);
        handle.clear();
    }
};

/// The stages by which files are read together. Each gives a problem when the connection is lost.
class Readings {
public:
    Readings(SftpSession& session, std::span<const std::string> paths, std::span<const Reply> looks, std::size_t limit)
        : _session(session), _limit(limit) {
        for (std::size_t at = 0; at < paths.size(); ++at)
            takeLook(_pending.emplace_back(Pending{paths[at], {}}), looks[at]);
    }

    Result<std::vector<FarReading>> read() {
        for (const auto stage : {&Readings::open, &Readings::readFirst, &Readings::readOn}) {
            if (auto went = (this->*stage)(); !went) return std::move(went).error();
        }
        std::vector<FarReading> readings;
        for (Pending& each : _pending) {
            if (!each.handle.empty()) _session.sendLater(sftp::closeHandle(each.handle));
            if (!each.reading.stamp) each.reading.bytes.clear();
            readings.push_back(std::move(each.reading));
        }
        return readings;
    }

private:
    void takeLook(Pending& each, const Reply& reply) const {
        if (reply.type != Type::attrs) return each.refuse(refusal(each.path, reply));
        each.reading.attributes = reply.attributes;
        if (const mode_t mode = modeOf(reply.attributes); !S_ISREG(mode))
            return each.refuse({each.path, "cannot read", notAFile(mode)});
        if (const std::uint64_t size = reply.attributes.size.value_or(0); size > _limit)
            return each.refuse({each.path, "cannot read", tooLarge(size, _limit)});
        each.handle = "to be opened";
    }

    Result<Done> open() {
        return onOpen([](const Pending& each) { return std::vector{sftp::openFile(each.path, sftp::openRead)}; },
                      [](Pending& each, std::span<const Reply> replies) {
                          each.handle = replies[0].text;
                          if (replies[0].type == Type::handle) return;
                          each.reading.isUnreadable = replies[0].status == sftp::permissionDenied;
                          each.refuse(refusal(each.path, replies[0]));
                      });
    }

    Result<Done> readFirst() {
        const std::uint32_t count = _session.readLimit();
        return onOpen(
            [count](const Pending& each) {
                return std::vector{sftp::statHandle(each.handle), sftp::readHandle(each.handle, 0, count)};
            },
            [this](Pending& each, std::span<const Reply> replies) {
                if (replies[0].type == Type::attrs) each.reading.attributes = replies[0].attributes;
                each.reading.stamp = stampFrom(each.reading.attributes);
                each.size = each.reading.stamp->size;
                take(each, replies[1]);
                if (each.size > _limit) tooMuch(each);
            });
    }

    // What is larger than one answer, whatever of it came.
    Result<Done> readOn() {
        while (std::ranges::any_of(_pending, wantsMore)) {
            auto went = onOpen(
                [this](const Pending& each) {
                    std::vector<Request> requests;
                    const std::uint32_t count = _session.readLimit();
                    std::uint64_t offset = each.reading.bytes.size();
                    for (int ahead = 0; wantsMore(each) && ahead < mostAhead && offset < each.size + 1; ++ahead) {
                        requests.push_back(sftp::readHandle(each.handle, offset, count));
                        offset += count;
                    }
                    return requests;
                },
                [this](Pending& each, std::span<const Reply> replies) {
                    for (const Reply& reply : replies)
                        if (!take(each, reply)) break;
                });
            if (!went) return went;
        }
        return Done();
    }

    static bool wantsMore(const Pending& each) {
        return !each.handle.empty() && each.reading.stamp && !each.isAtEnd && each.reading.bytes.size() < each.size;
    }

    // False when what follows of the same batch does not join on to it.
    bool take(Pending& each, const Reply& reply) const {
        if (reply.type == Type::data && !reply.text.empty() && reply.text.size() <= _session.readLimit()) {
            each.reading.bytes += reply.text;
            if (each.reading.bytes.size() > _limit) tooMuch(each);
            return reply.text.size() == _session.readLimit();
        }
        each.isAtEnd = true;
        const bool isEnd = reply.type == Type::status && reply.status == sftp::endOfFile;
        if (!isEnd) each.reading.stamp = Problem{each.path, "cannot read", reasonOf(reply), true};
        return false;
    }

    void tooMuch(Pending& each) const {
        each.reading.stamp = Problem{each.path, "cannot read", tooLarge(each.size, _limit)};
        each.isAtEnd = true;
    }

    // Asks about all files that are still of interest at once.
    template <class Ask, class Take>
    Result<Done> onOpen(const Ask& ask, const Take& take) {
        std::vector<Request> requests;
        std::vector<std::pair<Pending*, std::size_t>> asked;
        for (Pending& each : _pending) {
            if (each.handle.empty()) continue;
            auto own = ask(each);
            asked.emplace_back(&each, own.size());
            std::ranges::move(own, std::back_inserter(requests));
        }
        const auto replies = _session.exchange(requests);
        if (!replies) return replies.error();
        std::span<const Reply> left = *replies;
        for (const auto& [each, count] : asked) {
            if (count > 0) take(*each, left.first(count));
            left = left.subspan(count);
        }
        return Done();
    }

    static constexpr int mostAhead = 64;

    SftpSession& _session;
    std::size_t _limit;
    std::vector<Pending> _pending;
};

// Names that can be joined on to a folder's path, and lead nowhere else.
bool isPlainName(std::string_view name) {
    return !name.empty() && name != "." && name != ".." && name.find('/') == name.npos && name.find('\0') == name.npos;
}

/// One folder on its way through a listing that many share.
struct Listing {
    std::string path;
    std::string handle = {};
    std::vector<std::string> names = {};
    std::optional<Problem> problem = {};

    bool isOpen() const { return !handle.empty(); }
};

Problem unlisted(const Listing& listing, std::string reason) {
    return {listing.path, "cannot list", std::move(reason)};
}

Result<Done> openFolders(SftpSession& session, std::vector<Listing>& listings) {
    std::vector<Request> requests;
    for (const Listing& each : listings)
        requests.push_back(sftp::onPath(Type::opendir, each.path));
    const auto replies = session.exchange(requests);
    if (!replies) return replies.error();
    for (std::size_t at = 0; at < listings.size(); ++at) {
        const Reply& reply = (*replies)[at];
        if (reply.type == Type::handle) listings[at].handle = reply.text;
        if (!listings[at].isOpen()) listings[at].problem = unlisted(listings[at], reasonOf(reply));
    }
    return Done();
}

void takeNames(Listing& listing, const Reply& reply) {
    const bool isEnd = reply.type == Type::status && reply.status == sftp::endOfFile;
    if (!isEnd && reply.type != Type::name) listing.problem = unlisted(listing, reasonOf(reply));
    std::ranges::copy_if(reply.names, std::back_inserter(listing.names), isPlainName);
    if (listing.names.size() > mostFolderEntries) {
        listing.problem = unlisted(listing, "it has more than " + std::to_string(mostFolderEntries) + " entries");
    }
}

// Several answers of each folder are asked for at once, since its end is only told by one that is empty.
Result<Done> readFolders(SftpSession& session, std::vector<Listing>& listings) {
    constexpr std::size_t atOnce = 3;
    for (;;) {
        std::vector<Listing*> open;
        std::vector<Request> requests;
        for (Listing& each : listings) {
            if (!each.isOpen()) continue;
            open.push_back(&each);
            requests.insert(requests.end(), atOnce, Request(Type::readdir).text(each.handle));
        }
        if (open.empty()) return Done();
        const auto replies = session.exchange(requests);
        if (!replies) return replies.error();
        for (std::size_t at = 0; at < requests.size(); ++at) {
            Listing& listing = *open[at / atOnce];
            const Reply& reply = (*replies)[at];
            if (!listing.isOpen()) continue;
            takeNames(listing, reply);
            // An answer without names would be followed by others for ever.
            if (!reply.names.empty() && !listing.problem) continue;
            session.sendLater(sftp::closeHandle(listing.handle));
            listing.handle.clear();
        }
    }
}

Result<std::vector<Listing>> listTogether(SftpSession& session, std::span<const std::string> folders) {
    std::vector<Listing> listings;
    for (const std::string& folder : folders)
        listings.push_back({folder});
    if (auto opened = openFolders(session, listings); !opened) return std::move(opened).error();
    if (auto read = readFolders(session, listings); !read) return std::move(read).error();
    return listings;
}

}  // namespace

// Before anything is opened, since opening a FIFO would hold the server up.
Result<std::vector<Reply>> lookAtFarFiles(SftpSession& session, std::span<const std::string> paths) {
    std::vector<Request> requests;
    for (const std::string& path : paths)
        requests.push_back(sftp::onPath(Type::stat, path));
    return session.exchange(requests);
}

Result<std::vector<FarReading>> readFarFiles(SftpSession& session, std::span<const std::string> paths,
                                             std::span<const Reply> looks, std::size_t limit) {
    return Readings(session, paths, looks, limit).read();
}

Result<std::vector<FarReading>> readFarFiles(SftpSession& session, std::span<const std::string> paths,
                                             std::size_t limit) {
    const auto looks = lookAtFarFiles(session, paths);
    if (!looks) return looks.error();
    return readFarFiles(session, paths, *looks, limit);
}

std::string FarFiles::onHost(std::string_view path) const {
    const std::string& root = _connection.address().folder;
    return root == "/" ? std::string(path) : root + std::string(path);
}

std::vector<std::string> FarFiles::onHost(std::span<const std::string> paths) const {
    std::vector<std::string> all;
    for (const std::string& path : paths)
        all.push_back(onHost(path));
    return all;
}

Result<Stamp> FarFiles::look(std::string_view path) const {
    const std::vector<std::string> paths{std::string(path)};
    const auto stamps = lookAtAll(paths);
    if (!stamps) return Problem{paths.front(), "cannot read", stamps.error().text(), true};
    if (stamps->front()) return *stamps->front();
    return Problem{paths.front(), "cannot read", errorText(ENOENT)};
}

Result<std::vector<std::optional<Stamp>>> FarFiles::lookAtAll(std::span<const std::string> paths) const {
    const auto there = onHost(paths);
    const auto replies = withServer(_connection, [&](SftpSession& session) { return lookAtFarFiles(session, there); });
    if (!replies) return replies.error();
    std::vector<std::optional<Stamp>> stamps;
    for (const Reply& reply : *replies) {
        stamps.push_back(isFile(reply) ? std::optional(stampFrom(reply.attributes)) : std::nullopt);
    }
    return stamps;
}

FarReading FarFiles::readNow(std::string_view path, std::size_t limit) const {
    const std::string there = onHost(path);
    const std::vector<Request> looks{sftp::onPath(Type::stat, there), sftp::onPath(Type::lstat, there)};
    auto reading = withServer(_connection, [&](SftpSession& session) -> Result<FarReading> {
        const auto looked = session.exchange(looks);
        if (!looked) return looked.error();
        auto read = readFarFiles(session, std::span(&there, 1), std::span(*looked).first(1), limit);
        if (!read) return std::move(read).error();
        remember(path, looked->back(), read->front());
        return std::move(read->front());
    });
    if (reading) return *std::move(reading);
    FarReading lost;
    lost.stamp = Problem{std::string(path), "cannot read", reading.error().text(), true};
    return lost;
}

// A link is left to who follows it.
void FarFiles::remember(std::string_view path, const Reply& named, const FarReading& reading) const {
    const bool isSmall = reading.stamp && reading.bytes.size() <= longestExpected;
    if (isSmall && isFile(named) && _read.size() < mostRemembered) _read.insert_or_assign(std::string(path), reading);
}

Result<Stamp> FarFiles::readFile(std::string_view path, std::string& contents, std::size_t limit) const {
    const auto expected = _expected.find(path);
    FarReading reading;
    if (expected != _expected.end()) {
        reading = std::move(expected->second);
        _expected.erase(expected);
    } else {
        reading = readNow(path, limit);
    }
    contents = std::move(reading.bytes);
    if (reading.stamp && contents.size() > limit) {
        reading.stamp = Problem{{}, "cannot read", tooLarge(contents.size(), limit)};
        contents.clear();
    }
    // By the phone's own path, whatever its root is on the host.
    if (reading.stamp) return reading.stamp;
    Problem problem = std::move(reading.stamp).error();
    problem.path = path;
    const bool isThere = reading.attributes.permissions.has_value();
    if (_tellsPassedOver && isThere) tellPassedOver(_listener, path, problem.reason);
    return problem;
}

std::vector<FarFiles::Names> FarFiles::listNow(std::span<const std::string> folders) const {
    const auto paths = onHost(folders);
    auto listings = withServer(_connection, [&](SftpSession& session) { return listTogether(session, paths); });
    std::vector<Names> all;
    for (std::size_t at = 0; at < folders.size(); ++at) {
        if (!listings) {
            all.emplace_back(Problem{folders[at], "cannot list", listings.error().text(), true});
        } else if (Listing& each = (*listings)[at]; each.problem) {
            each.problem->path = folders[at];
            all.emplace_back(*each.problem);
        } else {
            std::ranges::sort(each.names);
            all.emplace_back(std::move(each.names));
        }
    }
    return all;
}

Result<std::vector<std::string>> FarFiles::listFolder(std::string_view path) const {
    const auto expected = _expectedFolders.find(path);
    if (expected != _expectedFolders.end()) {
        Names names = std::move(expected->second);
        _expectedFolders.erase(expected);
        return names;
    }
    const std::vector<std::string> folder{std::string(path)};
    return std::move(listNow(folder).front());
}

void FarFiles::expect(std::span<const std::string> files, std::span<const std::string> folders) const {
    _expected.clear();
    _expectedFolders.clear();
    if (!folders.empty()) {
        auto listed = listNow(folders);
        for (std::size_t at = 0; at < folders.size(); ++at)
            _expectedFolders.insert_or_assign(folders[at], std::move(listed[at]));
    }
    if (files.empty()) return;
    const auto paths = onHost(files);
    const auto looks = withServer(_connection, [&](SftpSession& session) { return lookAtFarFiles(session, paths); });
    if (!looks) return;
    std::size_t bytes = 0;
    for (std::size_t start = 0; start < files.size() && bytes < mostExpectedBytes;) {
        const std::size_t count = countAtOnce(std::span(*looks).subspan(start));
        const auto some = std::span(paths).subspan(start, count);
        const auto seen = std::span(*looks).subspan(start, count);
        auto readings = withServer(
            _connection, [&](SftpSession& session) { return readFarFiles(session, some, seen, longestExpected); });
        if (!readings) return;
        for (FarReading& reading : *readings) {
            bytes += reading.bytes.size();
            // What is larger is read by whoever wants it so.
            const bool isLarge = reading.attributes.size.value_or(0) > longestExpected;
            if (!isLarge) _expected.insert_or_assign(files[start], std::move(reading));
            ++start;
        }
    }
}

void FarFiles::endTurn() {
    _expected.clear();
    _expectedFolders.clear();
    _read.clear();
}

Result<Stamp> FarFiles::changeFile(std::string_view path, const platform::Change& change) {
    const std::string file(path);
    _expected.erase(file);
    auto read = _read.extract(file);
    auto known = read ? std::optional(std::move(read.mapped())) : std::nullopt;
    // It is under way meanwhile: a notification is going to follow.
    static_cast<void>(_connection.shell());
    std::optional<std::string>& left = _left[file];
    left.reset();
    const auto noted = [&](std::optional<std::string_view> held) {
        auto wanted = change(held);
        if (wanted && wanted->bytes.size() <= longestExpected) left = wanted->bytes;
        return wanted;
    };
    auto problem = FarChange(_connection, _listener, _place).make(file, onHost(path), noted, std::move(known));
    if (!problem) return Stamp{};
    left.reset();
    return *std::move(problem);
}

bool FarFiles::areAsLeft() const {
    std::vector<std::string> paths;
    for (const auto& [path, bytes] : _left) {
        if (!bytes) return false;
        paths.push_back(onHost(path));
    }
    const auto readings =
        withServer(_connection, [&](SftpSession& session) { return readFarFiles(session, paths, longestExpected); });
    if (!readings) return false;
    return std::ranges::equal(_left, *readings, [](const auto& left, const FarReading& now) {
        return now.stamp && now.bytes == *left.second;
    });
}

}  // namespace hosts
