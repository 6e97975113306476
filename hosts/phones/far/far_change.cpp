// SPDX-License-Identifier: MIT
#include "hosts/phones/far/far_change.h"

#include <sys/stat.h>

#include <cerrno>
#include <random>
#include <span>
#include <utility>
#include <vector>

#include "hosts/phones/kept_files.h"
#include "hosts/phones/temporary_file.h"
#include "hosts/system/error_text.h"

namespace hosts {
namespace {

using platform::FileSystem;
using platform::Problem;
using sftp::Reply;
using sftp::Request;
using sftp::Type;

constexpr std::uint32_t newFileMode = 0644;
constexpr std::uint32_t newFolderMode = 0755;
constexpr std::uint32_t permissionBits = 0777;
constexpr int mostTries = 50;
constexpr int mostConnections = 5;

std::string folderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string nameOf(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

std::string besides(const std::string& path, const std::string& name) {
    return path.substr(0, path.rfind('/') + 1) + name;
}

std::string randomLetters(int count) {
    constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
    std::random_device random;
    std::uniform_int_distribution<std::size_t> any(0, letters.size() - 1);
    std::string text;
    while (count-- > 0)
        text += letters[any(random)];
    return text;
}

}  // namespace

std::optional<Problem> FarChange::make(const std::string& path, const std::string& onHost,
                                       const platform::Change& change, std::optional<FarReading> known) {
    _path = path;
    _named = onHost;
    _known = std::move(known);
    int connections = 0;
    for (int tries = 0; tries < mostTries; ++tries) {
        const auto session = _connection.files();
        if (!session) {
            const char* const step = _isRenaming ? "not known whether this was written:" : "cannot write";
            return Problem{_path, step, session.error().text(), true};
        }
        _problem.reset();
        Step step = settle(**session);
        if (step == Step::again) step = tryOn(**session, change);
        if (step == Step::done || step == Step::failed) return _problem;
        if (step == Step::lost && ++connections == mostConnections) {
            const char* const unsure = _isRenaming ? "not known whether this was written:" : "cannot write";
            return Problem{_path, unsure, _problem ? _problem->reason : "the connection breaks each time", true};
        }
    }
    return Problem{_path, "cannot write", "another program keeps changing it"};
}

// What an earlier try has left on the phone. Again: nothing of it is there, and the change is to be made.
FarChange::Step FarChange::settle(SftpSession& session) {
    if (!_mayBeThere) return Step::again;
    const auto removed = session.exchange(sftp::onPath(Type::remove, _temporary));
    if (!removed) return lose(removed.error());
    const bool isGone = removed->status == sftp::noSuchFile;
    if (!removed->isOk() && !isGone) return fail("cannot remove the temporary file beside it", *removed);
    _mayBeThere = false;
    const bool hasHappened = std::exchange(_isRenaming, false) && isGone;
    return hasHappened ? Step::done : Step::again;
}

FarChange::Step FarChange::tryOn(SftpSession& session, const platform::Change& change) {
    if (const Step step = read(session); step != Step::done) return step;
    const bool isRead = _held.stamp.has_value();
    auto wanted = change(isRead ? std::optional<std::string_view>(_held.bytes) : std::nullopt);
    // Only what leads to a comparison with the file may rest on what was read before.
    if (_isOfBefore && (!wanted || wanted->isAnew || _held.bytes == wanted->bytes)) return Step::again;
    if (!wanted) {
        _problem = std::move(wanted).error();
        return Step::failed;
    }
    if (isRead && _held.bytes == wanted->bytes) return Step::done;
    if (_held.attributes.isFolder()) {
        _problem = Problem{_path, "cannot write", "cannot replace it: " + errorText(EISDIR)};
        return Step::failed;
    }
    if (const Step step = makeTemporary(session); step != Step::done) return step;
    Step step = fill(session, wanted->bytes);
    if (step == Step::done) step = compare(session);
    if (step == Step::done && wanted->isAnew) step = keepOld(session);
    if (step == Step::done) step = publish(session);
    return step == Step::done ? step : discard(session, step);
}

// A link to a regular file stays, and what it leads to is replaced; another is itself replaced.
FarChange::Step FarChange::read(SftpSession& session) {
    _target = _named;
    _isOfBefore = _known.has_value();
    if (_isOfBefore) {
        _held = *std::exchange(_known, std::nullopt);
        return Step::done;
    }
    const std::vector<Request> looks{sftp::onPath(Type::lstat, _named), sftp::onPath(Type::stat, _named)};
    const auto looked = session.exchange(looks);
    if (!looked) return lose(looked.error());
    const Reply& file = looked->back();
    const bool isFile = file.type == Type::attrs && file.attributes.isRegular();
    if (isFile && looked->front().attributes.isLink()) {
        const auto led = session.exchange(sftp::onPath(Type::realpath, _named));
        if (!led) return lose(led.error());
        if (led->names.size() == 1 && led->names.front().starts_with('/')) _target = led->names.front();
    }
    auto readings = readFarFiles(session, std::span(&_target, 1), std::span(&file, 1), FileSystem::usualReadLimit);
    if (!readings) return lose(readings.error());
    _held = std::move(readings->front());
    const bool isNowhere = looked->front().status == sftp::noSuchFile;
    if (isNowhere && !session.offers(sftp::posixRename)) return readAside(session);
    if (_held.stamp || !_held.stamp.error().isPassing) return Step::done;
    _problem = _held.stamp.error();
    _problem->path = _path;
    return Step::failed;
}

// Where nothing is replaced in one step, whoever broke off half-way has left the old file there.
FarChange::Step FarChange::readAside(SftpSession& session) {
    const std::vector<std::string> aside{besides(_target, asideNameOf(nameOf(_target)))};
    auto readings = readFarFiles(session, aside, FileSystem::usualReadLimit);
    if (!readings) return lose(readings.error());
    if (!readings->front().stamp) return Step::done;
    const auto back = session.exchange(sftp::renamePath(aside.front(), _target));
    return back ? Step::again : lose(back.error());
}

FarChange::Step FarChange::makeTemporary(SftpSession& session) {
    const bool isThere = _held.attributes.isRegular();
    _given = {};
    if (isThere) {
        _given.owner = _held.attributes.owner;
        _given.permissions = *_held.attributes.permissions & permissionBits;
    }
    for (bool isFirst = true;; isFirst = false) {
        _temporary = besides(_target, "." + nameOf(_target) + "." + randomLetters(6) + ".tmp");
        constexpr std::uint32_t flags = sftp::openWrite | sftp::openCreate | sftp::openAnew;
        std::vector<Request> requests{sftp::openFile(_temporary, flags, {.permissions = 0600})};
        requests.push_back(isThere ? sftp::onPath(Type::lstat, _target) : sftp::onPath(Type::stat, folderOf(_target)));
        _mayBeThere = true;
        const auto replies = session.exchange(requests);
        if (!replies) return lose(replies.error());
        const Reply& opened = replies->front();
        if (opened.type == Type::handle) {
            _handle = opened.text;
            if (isThere && _isOfBefore && !isAsHeld(replies->back().attributes)) {
                session.sendLater(sftp::closeHandle(_handle));
                return Step::again;
            }
            if (isThere) return Step::done;
            _given.owner = replies->back().attributes.owner;
            _given.permissions = newFileMode;
            return Step::done;
        }
        _mayBeThere = false;
        if (!isFirst || opened.status != sftp::noSuchFile)
            return fail("cannot make a temporary file beside it", opened);
        if (const Step step = makeFolders(session); step != Step::done) return step;
    }
}

bool FarChange::isAsHeld(const sftp::Attributes& now) const {
    const sftp::Attributes& held = _held.attributes;
    return now.isRegular() && now.permissions == held.permissions && now.owner == held.owner && now.size == held.size &&
           now.times && held.times && now.times->second == held.times->second;
}

FarChange::Step FarChange::makeFolders(SftpSession& session) {
    std::vector<Request> requests;
    for (std::size_t slash = _target.find('/', 1); slash != _target.npos; slash = _target.find('/', slash + 1))
        requests.push_back(sftp::makeFolder(_target.substr(0, slash), newFolderMode));
    // Those that are there are refused.
    const auto made = session.exchange(requests);
    return made ? Step::done : lose(made.error());
}

FarChange::Step FarChange::fill(SftpSession& session, const std::string& contents) {
    std::vector<Request> requests;
    const std::size_t atOnce = session.writeLimit();
    for (std::size_t at = 0; at < contents.size(); at += atOnce)
        requests.push_back(sftp::writeHandle(_handle, at, std::string_view(contents).substr(at, atOnce)));
    const std::size_t writes = requests.size();
    // The owner first: giving a file away may take permissions from it.
    if (_given.owner) requests.push_back(sftp::setHandle(_handle, {.owner = _given.owner}));
    requests.push_back(sftp::setHandle(_handle, {.permissions = _given.permissions}));
    const bool isDurable = session.offers(sftp::fsync);
    if (isDurable) requests.push_back(sftp::extendedOn(sftp::fsync, _handle));
    if (_held.stamp) requests.push_back(sftp::openFile(_target, sftp::openRead));
    const auto replies = session.exchange(requests);
    if (!replies) return lose(replies.error());
    session.sendLater(sftp::closeHandle(_handle));
    _oldHandle = _held.stamp && replies->back().type == Type::handle ? replies->back().text : std::string();
    return checkFilled(std::span(*replies).first(writes), std::span(*replies).subspan(writes), isDurable);
}

FarChange::Step FarChange::checkFilled(std::span<const Reply> writes, std::span<const Reply> rest, bool isDurable) {
    for (const Reply& write : writes) {
        if (!write.isOk()) return fail("cannot write the temporary file beside it", write);
    }
    if (_given.owner) {
        if (!rest.front().isOk()) remark("the phone keeps no other owner than you: " + _path + " is yours now");
        rest = rest.subspan(1);
    }
    if (!rest[0].isOk()) return fail("cannot give the temporary file beside it its permissions", rest[0]);
    if (!isDurable) {
        remark("the phone's SFTP server does not promise that a change outlasts a loss of power right after it");
    } else if (!rest[1].isOk()) {
        return fail("cannot make the temporary file beside it durable", rest[1]);
    }
    return Step::done;
}

// Whether the old file is still what was read; else the change is made on the newer one. Once more by its name, since
// it may have been replaced after it was opened.
FarChange::Step FarChange::compare(SftpSession& session) {
    std::vector<Request> requests{sftp::onPath(Type::stat, _target)};
    if (!_oldHandle.empty()) {
        requests.push_back(sftp::statHandle(_oldHandle));
        for (std::uint64_t at = 0; at <= _held.bytes.size(); at += session.readLimit())
            requests.push_back(sftp::readHandle(_oldHandle, at, session.readLimit()));
    }
    const auto replies = session.exchange(requests);
    if (!replies) return lose(replies.error());
    const Reply& named = replies->front();
    if (_oldHandle.empty()) {
        const bool isStillThere = named.type == Type::attrs;
        const bool wasThere = _held.attributes.permissions.has_value();
        return isStillThere == wasThere && !_held.stamp ? Step::done : Step::again;
    }
    session.sendLater(sftp::closeHandle(_oldHandle));
    std::string bytes;
    for (const Reply& reply : std::span(*replies).subspan(2))
        if (reply.type == Type::data) bytes += reply.text;
    const sftp::Attributes& opened = (*replies)[1].attributes;
    const bool isSame = bytes == _held.bytes && named.attributes.size == opened.size &&
                        named.attributes.times == opened.times && opened.permissions == _held.attributes.permissions;
    return isSame ? Step::done : Step::again;
}

// What was not understood is worth something to somebody all the same.
FarChange::Step FarChange::keepOld(SftpSession& session) {
    if (_held.stamp ? _held.bytes.empty() : !_held.isUnreadable) return Step::done;
    if (_held.stamp) {
        if (const auto kept = keepFile(_place, _path, _held.bytes)) {
            remark(_path + " was not understood and is written anew; what it held is kept in " + *kept);
            if (_listener) _listener->kept(_path, {*kept, false});
            return Step::done;
        }
    }
    const std::string aside = nameOf(_target) + "." + randomLetters(6);
    const auto moved = session.exchange(sftp::renamePath(_target, besides(_target, aside)));
    if (!moved) return lose(moved.error());
    if (!moved->isOk()) return fail("cannot move what it is aside", *moved);
    remark(_path + " was not understood and is written anew; what it was is now " + besides(_path, aside));
    if (_listener) _listener->kept(_path, {besides(_path, aside), true});
    return Step::done;
}

FarChange::Step FarChange::publish(SftpSession& session) {
    if (!session.offers(sftp::posixRename)) return publishInSteps(session);
    _isRenaming = true;
    const auto renamed = session.exchange(sftp::extendedOn(sftp::posixRename, _temporary, _target));
    if (!renamed) return lose(renamed.error());
    _isRenaming = false;
    if (!renamed->isOk()) return fail("cannot put the new file in its place", *renamed);
    _mayBeThere = false;
    return Step::done;
}

// The protocol's own renaming replaces nothing.
FarChange::Step FarChange::publishInSteps(SftpSession& session) {
    const std::string aside = besides(_target, asideNameOf(nameOf(_target)));
    const bool isThere = _held.attributes.permissions.has_value();
    if (isThere) {
        const std::vector<Request> requests{sftp::onPath(Type::remove, aside), sftp::renamePath(_target, aside)};
        const auto moved = session.exchange(requests);
        if (!moved) return lose(moved.error());
        if (!moved->back().isOk()) return fail("cannot move the old file aside", moved->back());
    }
    _isRenaming = true;
    const auto renamed = session.exchange(sftp::renamePath(_temporary, _target));
    if (!renamed) return lose(renamed.error());
    _isRenaming = false;
    if (!renamed->isOk()) {
        const auto back = session.exchange(sftp::renamePath(aside, _target));
        if (!back) return lose(back.error());
        return fail("cannot put the new file in its place", *renamed);
    }
    _mayBeThere = false;
    if (!isThere) return Step::done;
    if (const auto removed = session.exchange(sftp::onPath(Type::remove, aside)); !removed) return Step::done;
    remark(
        "the phone's SFTP server replaces no file in one step: for a moment of each change other programs find none");
    return Step::done;
}

FarChange::Step FarChange::discard(SftpSession& session, Step step) {
    if (step == Step::lost || !session.isAlive()) return Step::lost;
    const auto problem = std::exchange(_problem, std::nullopt);
    if (_mayBeThere && settle(session) == Step::lost) return Step::lost;
    _problem = problem;
    return step;
}

FarChange::Step FarChange::fail(const char* step, const Reply& reply) {
    _problem = Problem{_path, "cannot write", std::string(step) + ": " + reasonOf(reply)};
    return Step::failed;
}

FarChange::Step FarChange::lose(const Problem& problem) {
    _problem = problem;
    return Step::lost;
}

void FarChange::remark(const std::string& sentence) {
    if (_listener) _listener->remark(sentence);
}

}  // namespace hosts
