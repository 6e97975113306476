// SPDX-License-Identifier: MIT
#include "platform/services/dictionary_files.h"

#include <algorithm>
#include <new>
#include <utility>

#include "platform/foundation/property_list.h"
#include "platform/services/file_listener.h"

namespace platform {
namespace {

std::shared_ptr<const Dictionary> parse(std::string_view bytes) {
    const PropertyListReading reading = readPropertyList(bytes);
    if (!reading) return nullptr;
    const auto* root = std::get_if<std::shared_ptr<const Dictionary>>(&reading.value->storage());
    return root ? *root : nullptr;
}

Problem tooLarge(const std::string& path, std::size_t size) {
    return {path, "cannot write",
            "it would hold " + std::to_string(size) + " bytes, and of a file that holds more than " +
                std::to_string(FileSystem::usualReadLimit) + " nothing is read; the old file is left as it is"};
}

Problem withoutForm(const std::string& path, const std::string& reason) {
    return {{},
            {},
            path + " holds " + reason +
                ", which settings are not written with, so it was left as it is; move the file away to start "
                "anew"};
}

// Each is read a while after the one before it.
constexpr int mostReadings = 20;
constexpr int mostEdits = 5;

Problem tooLittleMemory(std::string_view path, std::string step) {
    return {std::string(path), std::move(step), "too little memory", true};
}

// Why a file is not changed once another, or it itself, could not be read.
Problem notAfter(const Problem& unread, const std::string& path) {
    if (unread.path == path) return unread;
    return {path, "cannot write", unread.text(), true};
}

}  // namespace

/// What a change has come to, on the file on which it was made last.
struct DictionaryFiles::Attempt {
    std::shared_ptr<const Dictionary> before;
    std::vector<std::shared_ptr<const Dictionary>> after;  ///< what each edit has come to
    bool isDoubtful = false;  ///< the file was no property list, and that has not been seen twice
    bool hasForm = true;
    std::shared_ptr<const std::string> bytes;
};

const DictionaryFiles::Content& DictionaryFiles::Known::parsed() {
    if (!content) content = parse(*bytes);
    return *content;
}

DictionaryFiles::Draft* DictionaryFiles::draftOf(std::string_view path) {
    const auto draft = std::ranges::find(_drafts, path, &Draft::path);
    return draft == _drafts.end() ? nullptr : &*draft;
}

DictionaryFiles::Content DictionaryFiles::read(std::string_view path) {
    if (const Draft* draft = draftOf(path)) return draft->content;
    try {
        const auto found = _known.find(path);
        if (found != _known.end() && _files.isFar()) return found->second.parsed();
        if (found != _known.end() && found->second.stamp.isSettled) {
            const Result<Stamp> now = _files.look(path);
            if (now && now->isSameAs(found->second.stamp)) return found->second.parsed();
        }
        return _known.insert_or_assign(std::string(path), readAnew(path)).first->second.parsed();
    } catch (const std::bad_alloc&) {
        tellUnread(tooLittleMemory(path, "cannot read"));
        return nullptr;
    }
}

DictionaryFiles::Known DictionaryFiles::readAnew(std::string_view path) {
    const auto bytes = std::make_shared<std::string>();
    const Result<Stamp> stamp = _files.readFile(path, *bytes);
    if (!stamp) {
        if (stamp.error().isPassing) tellUnread(stamp.error());
        return {bytes, {}, Content()};
    }
    Known now{bytes, *stamp, {}};
    const auto found = _known.find(path);
    if (found != _known.end() && found->second.content && *found->second.bytes == *bytes) {
        now.content = found->second.content;
    } else {
        settle(path, now);
    }
    return now;
}

void DictionaryFiles::settle(std::string_view path, Known& known) {
    for (int reading = 1; !known.parsed(); ++reading) {
        const auto bytes = std::make_shared<std::string>();
        const Result<Stamp> stamp = _files.readAgain(path, *bytes);
        if (!stamp) {
            if (stamp.error().isPassing) tellUnread(stamp.error());
            return;
        }
        if (*bytes == *known.bytes) return;
        known = {bytes, *stamp, {}};
        if (reading == mostReadings) {
            return tellUnread({std::string(path), "cannot read", "another program keeps writing it", true});
        }
    }
}

void DictionaryFiles::tellUnread(Problem problem) {
    if (_listener) _listener->notRead(problem);
    _unread = std::move(problem);
}

void DictionaryFiles::edit(std::string_view path, const Edit& edit) {
    const std::string file(path);
    if (_files.landsTogether()) return note(file, edit);
    make(file, {edit});
}

void DictionaryFiles::note(const std::string& path, const Edit& edit) {
    const Content held = read(path);
    auto edited = _unread ? Result<Dictionary>(notAfter(*_unread, path)) : edit(held ? *held : Dictionary());
    if (!edited) {
        if (_listener) _listener->notChanged(edited.error(), true);
        return;
    }
    Draft* draft = draftOf(path);
    if (!draft) draft = &_drafts.emplace_back(Draft{path, {}, {}});
    draft->edits.push_back(edit);
    draft->content = std::make_shared<const Dictionary>(*std::move(edited));
}

void DictionaryFiles::land() {
    for (const Draft& draft : std::exchange(_drafts, {}))
        make(draft.path, draft.edits);
}

void DictionaryFiles::make(const std::string& path, const std::vector<Edit>& edits) {
    const auto attempt = std::make_shared<Attempt>();
    Result<Stamp> outcome = Problem{};
    try {
        for (int tries = 0; tries < mostEdits; ++tries) {
            outcome = _unread ? Result<Stamp>(notAfter(*_unread, path)) : tryEdits(path, edits, attempt);
            if (!attempt->isDoubtful || _unread) break;
            // What is far is not looked at again by itself.
            if (_files.isFar()) _known.erase(path);
            (void)read(path);
        }
    } catch (const std::bad_alloc&) {
        outcome = tooLittleMemory(path, "cannot write");
    }
    if (!outcome && outcome.error().isPassing) _unread = outcome.error();
    if (!_listener) return;
    if (!outcome) return _listener->notChanged(outcome.error(), attempt->hasForm);
    auto before = attempt->before;
    for (const auto& after : attempt->after)
        _listener->changed(path, *std::exchange(before, after), *after);
}

Result<Stamp> DictionaryFiles::tryEdits(const std::string& path, const std::vector<Edit>& edits,
                                        const std::shared_ptr<Attempt>& attempt) {
    const auto found = _known.find(path);
    const Known known =
        found == _known.end() ? Known{std::make_shared<const std::string>(), {}, Content()} : found->second;
    const Change write = [known, attempt, edits, path](std::optional<std::string_view> held) -> Result<NewContent> {
        const bool isKnown = held && known.content && *held == *known.bytes;
        const Content content = isKnown ? *known.content : held ? parse(*held) : nullptr;
        attempt->isDoubtful = held && !content && !isKnown;
        if (attempt->isDoubtful) return Problem{path, "cannot write", "another program keeps writing it", true};
        attempt->before = content ? content : std::make_shared<const Dictionary>();
        attempt->after.clear();
        for (const Edit& edit : edits) {
            auto edited = edit(attempt->after.empty() ? *attempt->before : *attempt->after.back());
            if (!edited) return std::move(edited).error();
            attempt->after.push_back(std::make_shared<const Dictionary>(*std::move(edited)));
        }
        PropertyListWriting writing = writeXmlPropertyList(Value(attempt->after.back()));
        attempt->hasForm = static_cast<bool>(writing);
        if (!writing) return withoutForm(path, writing.reason);
        if (writing.bytes->size() > FileSystem::usualReadLimit) return tooLarge(path, writing.bytes->size());
        attempt->bytes = std::make_shared<const std::string>(*std::move(writing.bytes));
        return NewContent{*attempt->bytes, !content};
    };
    Result<Stamp> outcome = _files.changeFile(path, write);
    if (outcome) {
        const bool isAsBefore = known.content && *known.bytes == *attempt->bytes;
        _known.insert_or_assign(path, Known{attempt->bytes, *outcome, isAsBefore ? known.content : std::nullopt});
    }
    return outcome;
}

DictionaryFiles::Contents DictionaryFiles::forget() {
    land();
    _files.endTurn();
    _unread.reset();
    Contents contents;
    for (auto& [path, known] : std::exchange(_known, {}))
        contents.emplace(path, known.parsed());
    return contents;
}

}  // namespace platform
