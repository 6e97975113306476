// SPDX-License-Identifier: MIT
#include "platform/services/dictionary_files.h"

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

/// What a change has come to, on the file on which it was made last.
struct Edit {
    std::shared_ptr<const Dictionary> before;
    std::shared_ptr<const Dictionary> after;
    bool hasForm = true;
    std::shared_ptr<const std::string> bytes;
};

}  // namespace

const DictionaryFiles::Content& DictionaryFiles::Known::parsed() {
    if (!content) content = parse(*bytes);
    return *content;
}

DictionaryFiles::Content DictionaryFiles::read(std::string_view path) {
    const auto found = _known.find(path);
    if (found != _known.end() && found->second.stamp.isSettled) {
        const Result<Stamp> now = _files.look(path);
        if (now && now->isSameAs(found->second.stamp)) return found->second.parsed();
    }
    const auto bytes = std::make_shared<std::string>();
    const Result<Stamp> stamp = _files.readFile(path, *bytes);
    if (!stamp) {
        if (_listener && stamp.error().isPassing) _listener->notRead(stamp.error());
        _known.insert_or_assign(std::string(path), Known{bytes, {}, Content()});
        return nullptr;
    }
    if (found == _known.end() || *found->second.bytes != *bytes) {
        return _known.insert_or_assign(std::string(path), Known{bytes, *stamp, {}}).first->second.parsed();
    }
    found->second.stamp = *stamp;
    return found->second.parsed();
}

void DictionaryFiles::edit(std::string_view path, const std::function<Dictionary(Dictionary held)>& change) {
    const auto found = _known.find(path);
    const Known known =
        found == _known.end() ? Known{std::make_shared<const std::string>(), {}, Content()} : found->second;
    const auto edit = std::make_shared<Edit>();
    const Change write = [known, edit, change,
                          path = std::string(path)](std::optional<std::string_view> held) -> Result<std::string> {
        const bool isKnown = held && known.content && *held == *known.bytes;
        const Content content = isKnown ? *known.content : held ? parse(*held) : nullptr;
        edit->before = content ? content : std::make_shared<const Dictionary>();
        edit->after = std::make_shared<const Dictionary>(change(*edit->before));
        PropertyListWriting writing = writeXmlPropertyList(Value(edit->after));
        edit->hasForm = static_cast<bool>(writing);
        if (!writing) return withoutForm(path, writing.reason);
        if (writing.bytes->size() > FileSystem::usualReadLimit) return tooLarge(path, writing.bytes->size());
        edit->bytes = std::make_shared<const std::string>(*std::move(writing.bytes));
        return *edit->bytes;
    };
    const Result<Stamp> outcome = _files.changeFile(path, write);
    if (outcome) {
        const bool isAsBefore = known.content && *known.bytes == *edit->bytes;
        _known.insert_or_assign(std::string(path),
                                Known{edit->bytes, *outcome, isAsBefore ? known.content : std::nullopt});
    }
    if (!_listener) return;
    if (outcome) {
        _listener->changed(path, *edit->before, *edit->after);
    } else {
        _listener->notChanged(outcome.error(), edit->hasForm);
    }
}

DictionaryFiles::Contents DictionaryFiles::forget() {
    Contents contents;
    for (auto& [path, known] : std::exchange(_known, {}))
        contents.emplace(path, known.parsed());
    return contents;
}

}  // namespace platform
