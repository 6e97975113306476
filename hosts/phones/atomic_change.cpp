// SPDX-License-Identifier: MIT
#include "hosts/phones/atomic_change.h"

#include <fcntl.h>

#include <cerrno>
#include <utility>

#include "hosts/phones/confined_open.h"
#include "hosts/phones/file_attributes.h"
#include "hosts/phones/file_reading.h"
#include "hosts/phones/folder_turn.h"
#include "hosts/phones/kept_files.h"
#include "hosts/phones/temporary_file.h"
#include "hosts/system/error_text.h"

namespace hosts {

namespace {

using platform::FileSystem;
using platform::Problem;
using platform::Result;

constexpr mode_t newFileMode = 0644;
constexpr mode_t permissionBits = 0777;

// A program that changes the file without pause may win some of these, but not all.
constexpr int mostTries = 50;

// As file systems answer that replace nothing by renaming. A folder that may not be changed answers so too, but does
// not let the old file be moved either.
bool mayReplaceNothing(int error) {
    return error == EEXIST || error == EPERM || error == EACCES || error == ENOTSUP;
}

}  // namespace

std::optional<Problem> AtomicChange::make(std::string_view path, const platform::Change& change) {
    _path = path;
    for (int tries = 0; tries < mostTries; ++tries) {
        _problem.reset();
        _place.reset();
        const Step step = find(change) ? tryOn(change) : Step::failed;
        if (step != Step::again) return _problem;
    }
    return Problem{_path, "cannot write", "another program keeps changing it"};
}

bool AtomicChange::check(bool succeeded, const char* step) {
    if (!succeeded && !_problem) {
        _problem = Problem{_path, "cannot write", std::string(step) + ": " + errorText(errno)};
    }
    return succeeded;
}

void AtomicChange::remark(const std::string& sentence) {
    if (_listener) _listener->remark(sentence);
}

bool AtomicChange::find(const platform::Change& change) {
    _place = _finder.find(_path);
    if (!_place && _finder.failure().error == ENOENT) {
        // A change that comes to nothing makes no folders.
        if (auto wanted = change(std::nullopt); !wanted) {
            _problem = std::move(wanted).error();
            return false;
        }
        if (_finder.makeFolders(_path)) _place = _finder.find(_path);
    }
    if (_place) {
        waitForTurn(_calls, _place->folder);
        if (_finder.lookAgain(*_place)) return true;
    }
    errno = _finder.failure().error;
    return check(false, _finder.failure().step);
}

AtomicChange::Step AtomicChange::tryOn(const platform::Change& change) {
    Held held;
    if (const Step step = read(held); step != Step::done) return step;
    auto wanted = change(held.bytes ? std::optional<std::string_view>(*held.bytes) : std::nullopt);
    if (!wanted) {
        _problem = std::move(wanted).error();
        return Step::failed;
    }
    if (_place->old && held.bytes && *held.bytes == wanted->bytes) return Step::done;
    if (_place->holds(S_IFDIR)) {
        errno = EISDIR;
        check(false, "cannot replace it");
        return Step::failed;
    }

    removeAbandoned(_calls, _place->folder, _place->name, _place->old.has_value());
    TemporaryFile temporary{_calls, _place->folder, _place->name};
    if (!fill(temporary, held, wanted->bytes)) return Step::failed;
    const auto isNewest = isAsRead(held);
    if (!check(isNewest.has_value(), "cannot read it once more")) return Step::failed;
    if (!*isNewest) return Step::again;
    if (wanted->isAnew && !keepOld(held)) return Step::failed;
    return putInPlace(temporary, held) ? Step::done : Step::failed;
}

bool AtomicChange::putInPlace(TemporaryFile& temporary, const Held& held) {
    if (!check(publish(temporary), "cannot put the new file in its place")) {
        putOldBack();
        return false;
    }
    if (!_movedTo.empty()) {
        const std::string moved = _path.substr(0, _path.rfind('/') + 1) + _movedTo;
        remark(_path + " was not understood and is written anew; what it was is now " + moved);
        if (_listener) _listener->kept(_path, {moved, true});
    }
    const Given name = synchroniseFolder(_calls, _place->folder);
    const int error = errno;
    if (name == Given::refused || isFileSystemOfProgram(_place->folder.get())) {
        remark("the phone's file system does not promise that a change outlasts a loss of power right after it");
    }
    errno = error;
    if (!check(name != Given::failed, "it is written, but its name may not outlast a crash")) return false;
    if (held.isAside) removeEntry(_calls, _place->folder, asideNameOf(_place->name));
    return true;
}

Descriptor AtomicChange::openOld(const std::string& name) {
    return openToRead([&] { return openEntry(_calls, _place->folder, name, readingFlags() | O_NOFOLLOW); });
}

// Fails when the file cannot be read just now, so that nobody knows what a change of it would be.
AtomicChange::Step AtomicChange::read(Held& held) {
    if (_place->old && !_place->holds(S_IFREG)) return Step::done;
    held.file = openOld(_place->old ? _place->name : asideNameOf(_place->name));
    // One that was there a moment ago is being replaced, and is no file that holds nothing.
    if (!held.file.isOpen() && errno == ENOENT) return _place->old ? Step::again : Step::done;
    held.isAside = !_place->old;
    std::string bytes;
    Problem problem = readingProblem(_path, errno);
    if (held.file.isOpen()) {
        const auto stamp = readOpened(_calls, held.file, _path, bytes, FileSystem::usualReadLimit, &held.status);
        if (stamp) {
            held.bytes = std::move(bytes);
            return Step::done;
        }
        problem = stamp.error();
    }
    held.isUnreadable = !problem.isPassing && !held.isAside;
    if (!problem.isPassing) return Step::done;
    _problem = std::move(problem);
    return Step::failed;
}

bool AtomicChange::fill(TemporaryFile& temporary, Held& held, std::string_view contents) {
    const auto keeps = held.status ? held.status : _place->holds(S_IFREG) ? _place->old : std::nullopt;
    const mode_t mode = keeps ? keeps->st_mode & permissionBits : newFileMode;
    if (!check(temporary.create(mode), "cannot make a temporary file beside it")) return false;
    if (!check(temporary.fill(contents), "cannot write the temporary file beside it")) return false;
    if (!temporary.countsNames()) remark("the phone's file system does not count the names of a file");
    // The owner first: giving a file away may take permissions from it. Access lists last: permissions are a part of
    // them.
    if (keeps) {
        const Given owner = temporary.setOwner(keeps->st_uid, keeps->st_gid);
        if (!check(owner != Given::failed, "cannot give the temporary file beside it its owner")) return false;
        if (owner == Given::refused) {
            remark("the phone's files keep no other owner than you: " + _path + " is yours now");
        }
    }
    const bool permitted = temporary.setMode(mode) != Given::failed;
    if (!check(permitted, "cannot give the temporary file beside it its permissions")) return false;
    // A file system that is a program may keep a file that is open under another name when it is replaced.
    const Descriptor old = std::move(held.file);
    return check(!old.isOpen() || temporary.copyAttributes(old),
                 "cannot give the temporary file beside it its attributes") &&
           check(temporary.synchronise(), "cannot make the temporary file beside it durable");
}

std::optional<bool> AtomicChange::isAsRead(const Held& held) {
    const auto before = _place->old;
    if (!_finder.lookAgain(*_place)) return std::nullopt;
    if (_place->old.has_value() != before.has_value()) return false;
    if (!before) return true;
    if (!held.bytes) return before->st_dev == _place->old->st_dev && before->st_ino == _place->old->st_ino;
    const Descriptor now = openOld(_place->name);
    if (!now.isOpen()) return errno == ENOENT || errno == ELOOP ? std::optional(false) : std::nullopt;
    return holdsJust(_calls, now, *held.bytes);
}

// What was not understood is worth something to somebody all the same.
bool AtomicChange::keepOld(const Held& held) {
    const bool isNothing = held.bytes ? held.bytes->empty() : !held.isUnreadable;
    if (isNothing) return true;
    if (held.bytes) {
        const auto kept = keepFile(machinePath(_root), _path, *held.bytes);
        if (kept) {
            remark(_path + " was not understood and is written anew; what it held is kept in " + *kept);
            if (_listener) _listener->kept(_path, {*kept, false});
            return true;
        }
    }
    return moveOldAway();
}

bool AtomicChange::moveOldAway() {
    const std::string aside = freeNameBeside(_calls, *_place);
    if (!check(!aside.empty() && rename(_place->name, aside), "cannot move what it is aside")) return false;
    _movedTo = aside;
    _place->old.reset();
    return true;
}

void AtomicChange::putOldBack() {
    if (!_movedTo.empty()) rename(_movedTo, _place->name);
    _movedTo.clear();
}

bool AtomicChange::rename(const std::string& from, const std::string& to) {
    return uninterrupted([&] { return _calls.rename(_place->folder.get(), from.c_str(), to.c_str()); }) == 0;
}

bool AtomicChange::publish(TemporaryFile& temporary) {
    return temporary.publish() || (_place->old && mayReplaceNothing(errno) && publishInSteps(temporary));
}

bool AtomicChange::publishInSteps(TemporaryFile& temporary) {
    const std::string aside = asideNameOf(_place->name);
    const int refusal = errno;
    if (!rename(_place->name, aside)) {
        errno = refusal;
        return false;
    }
    if (!temporary.publish()) {
        const int error = errno;
        rename(aside, _place->name);
        errno = error;
        return false;
    }
    remark(
        "the phone's file system replaces no file in one step: for a moment of each change other programs find none");
    // The old file goes only once the new one's name is durable.
    if (synchroniseFolder(_calls, _place->folder) == Given::failed) return false;
    removeEntry(_calls, _place->folder, aside);
    return true;
}

}  // namespace hosts
