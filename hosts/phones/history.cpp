// SPDX-License-Identifier: MIT
#include "hosts/phones/history.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <map>
#include <span>
#include <utility>

#include "hosts/phones/folder_turn.h"
#include "hosts/system/error_text.h"
#include "hosts/system/new_file.h"
#include "hosts/system/state_folder.h"
#include "platform/foundation/base64.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/system_file.h"

namespace hosts {

namespace {

namespace fs = std::filesystem;
using platform::Done;
using platform::Problem;
using platform::Result;

// A line is "CHECKSUM VERSION OWNER RECORD": the checksum of all behind it, which later versions keep as it is; the
// phone, as `owner` says it; and the record as a binary property list in base64.
constexpr std::string_view lineVersion = "1";
constexpr std::size_t checksumLength = 16;

constexpr std::uint64_t changesBetweenTrims = 500;
constexpr std::size_t bytesBetweenTrims = std::size_t{16} << 20;
// Of each phone, when the file is trimmed; until that is done again so much may come.
constexpr std::size_t mostBytes = (std::size_t{64} << 20) - bytesBetweenTrims;

constexpr std::size_t shortTail = 4096;

std::string_view takeWord(std::string_view& text) {
    const std::size_t end = std::min(text.find(' '), text.size());
    const std::string_view word = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return word;
}

std::optional<HistoryEntry> decode(std::string_view record) {
    const platform::Data bytes = platform::decodeBase64(record);
    const auto reading = platform::readPropertyList({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    const platform::Dictionary* root = reading ? reading.value->dictionary() : nullptr;
    return root ? entryOf(*root) : std::nullopt;
}

std::string encode(const HistoryEntry& entry, const std::string& owner) {
    const auto record = platform::writeBinaryPropertyList(platform::Value(recordOf(entry)));
    std::string line = std::string(lineVersion) + " " + owner + " ";
    if (record) platform::appendBase64(line, std::as_bytes(std::span(*record.bytes)));
    return textNumber(line) + " " + line + "\n";
}

platform::Date timeNow() {
    constexpr double from1970To2001 = 978'307'200;
    const std::chrono::duration<double> now = std::chrono::system_clock::now().time_since_epoch();
    return {std::floor(now.count()) - from1970To2001};
}

// By the changes that took others back, the last first: one that was itself taken back takes back nothing.
void markUndone(std::vector<HistoryEntry>& entries) {
    std::set<std::uint64_t> undone;
    for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
        entry->isUndone = undone.contains(entry->change);
        if (entry->undoes && !entry->isUndone) undone.insert(*entry->undoes);
    }
}

}  // namespace

/// A line of the file.
struct History::Line {
    enum class State { damaged, newer, own, other };

    State state = State::damaged;
    std::string text;
    std::string owner = {};
    HistoryEntry entry = {};
};

/// How the file ends.
struct History::Tail {
    std::uint64_t lastChange = 0;
    std::size_t size = 0;  ///< without what was cut
};

History::History(Result<std::string> folder, std::string place, std::function<std::string()> mark)
    : _folder(std::move(folder)), _place(std::move(place)), _mark(std::move(mark)) {
    if (!_folder) return;
    const std::string name = fileNameFrom(fs::path(_place).filename().string(), "phone").substr(0, 60);
    _path = *_folder + "/" + name + "-" + textNumber(_place);
}

Problem History::problem(const char* what, std::string reason) const {
    return _folder ? Problem{_path, what, std::move(reason)} : _folder.error();
}

const std::string& History::owner() {
    if (!_owner) _owner = textNumber(_place + "\n" + _mark());
    return *_owner;
}

History::Line History::parse(std::string_view text) const {
    Line line{Line::State::damaged, std::string(text)};
    if (text.size() <= checksumLength || text[checksumLength] != ' ') return line;
    const std::string_view checksum = takeWord(text);
    if (textNumber(text) != checksum) return line;
    if (takeWord(text) != lineVersion) {
        line.state = Line::State::newer;
        return line;
    }
    line.owner = takeWord(text);
    if (auto entry = decode(text)) {
        line.entry = *std::move(entry);
        line.state = line.owner == *_owner ? Line::State::own : Line::State::other;
    }
    return line;
}

// What is behind the last newline was cut, or is still being written.
std::vector<History::Line> History::parseAll(std::string_view bytes) const {
    std::vector<Line> lines;
    for (std::size_t end = 0; (end = bytes.find('\n')) != bytes.npos; bytes.remove_prefix(end + 1)) {
        if (end > 0) lines.push_back(parse(bytes.substr(0, end)));
    }
    return lines;
}

Result<std::vector<History::Line>> History::readLines() {
    if (!_folder) return _folder.error();
    owner();
    std::error_code missing;
    if (!fs::exists(_path, missing) && !missing) return std::vector<Line>();
    if (!fs::is_regular_file(_path, missing)) return problem("cannot read", "it is no regular file");
    errno = 0;
    const auto bytes = platform::readSystemFile(_path);
    if (!bytes) return problem("cannot read", errorText(errno));
    return parseAll(*bytes);
}

Result<History::Reading> History::read() {
    const auto lines = readLines();
    if (!lines) return lines.error();
    Reading reading;
    for (const Line& line : *lines) {
        switch (line.state) {
            case Line::State::newer:
                return problem("cannot read", "a newer version of the program has written it");
            case Line::State::damaged:
                ++reading.damagedLines;
                break;
            case Line::State::other:
                reading.otherPhones.insert(line.entry.change);
                break;
            case Line::State::own:
                reading.entries.push_back(line.entry);
        }
    }
    markUndone(reading.entries);
    const std::size_t tooMany = reading.entries.size() - std::min(reading.entries.size(), mostEntries);
    reading.entries.erase(reading.entries.begin(), reading.entries.begin() + static_cast<std::ptrdiff_t>(tooMany));
    return reading;
}

Result<Descriptor> History::takeTurn() {
    if (!_folder) return _folder.error();
    std::error_code failure;
    if (!makePrivateFolders(*_folder, failure)) return problem("cannot write", failure.message());
    Descriptor folder{::open(_folder->c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    if (!folder.isOpen()) return problem("cannot write", errorText(errno));
    if (!waitForTurn(FileCalls::system(), folder)) return problem("cannot write", "another program keeps it locked");
    return folder;
}

Result<std::uint64_t> History::append(std::vector<HistoryEntry> entries, std::uint64_t turn) {
    const auto turnTaken = takeTurn();
    if (!turnTaken) return turnTaken.error();
    owner();
    constexpr int flags = O_RDWR | O_CREAT | O_APPEND | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    const Descriptor file{::open(_path.c_str(), flags, 0600)};
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0) return problem("cannot write", errorText(errno));
    if (!S_ISREG(status.st_mode)) return problem("cannot write", "it is no regular file");
    const auto size = static_cast<std::size_t>(status.st_size);
    const auto tail = readTail(file, size);
    if (!tail) return tail.error();

    if (tail->size < size && ::ftruncate(file.get(), static_cast<off_t>(tail->size)) != 0) {
        return problem("cannot write", errorText(errno));
    }
    std::string text;
    std::uint64_t number = tail->lastChange;
    const platform::Date now = timeNow();
    for (HistoryEntry& entry : entries) {
        entry.change = ++number;
        entry.turn = turn == 0 ? turn = number : turn;
        entry.time = now;
        text += encode(entry, owner());
    }
    if (text.size() > mostBytes) return problem("cannot write", "the change takes too much room");
    const auto written = write(file, tail->size, text);
    if (!written) return written.error();
    const bool isDue = number / changesBetweenTrims != tail->lastChange / changesBetweenTrims ||
                       (size + text.size()) / bytesBetweenTrims != size / bytesBetweenTrims;
    // The change is kept already.
    if (isDue) (void)trim();
    return turn;
}

// In one step, so that a reader finds whole lines, and whoever is killed meanwhile leaves at most one that is cut.
Result<Done> History::write(const Descriptor& file, std::size_t size, std::string_view text) {
    const ssize_t written = uninterrupted([&] { return ::write(file.get(), text.data(), text.size()); });
    if (written == static_cast<ssize_t>(text.size())) return Done();
    const int error = written < 0 ? errno : ENOSPC;
    if (written > 0 && ::ftruncate(file.get(), static_cast<off_t>(size)) != 0)
        return problem("cannot write", errorText(errno));
    return problem("cannot write", errorText(error));
}

// Changes are numbered on from the last line that can be read.
Result<History::Tail> History::readTail(const Descriptor& file, std::size_t size) {
    for (std::size_t length = shortTail;; length *= 8) {
        const std::size_t start = size - std::min(size, length);
        std::string bytes(size - start, '\0');
        const ssize_t got =
            uninterrupted([&] { return ::pread(file.get(), bytes.data(), bytes.size(), static_cast<off_t>(start)); });
        if (got != static_cast<ssize_t>(bytes.size())) return problem("cannot read", errorText(got < 0 ? errno : EIO));
        Tail tail{.size = start + bytes.rfind('\n') + 1};
        if (start > 0) bytes.erase(0, bytes.find('\n'));
        const std::vector<Line> lines = parseAll(bytes);
        for (auto line = lines.rbegin(); line != lines.rend() && tail.lastChange == 0; ++line) {
            if (line->state == Line::State::newer) {
                return problem("cannot write", "a newer version of the program has written it");
            }
            tail.lastChange = line->entry.change;
        }
        if (tail.lastChange > 0 || start == 0) return tail;
    }
}

Result<Done> History::trim() {
    auto lines = readLines();
    if (!lines) return lines.error();
    struct Share {
        std::size_t changes = 0;
        std::size_t bytes = 0;
    };
    std::map<std::string, Share> shares;
    std::vector<Line> staying;
    for (auto line = lines->rbegin(); line != lines->rend(); ++line) {
        if (line->state == Line::State::newer) return Done();
        if (line->state == Line::State::damaged) continue;
        Share& share = shares[line->owner];
        ++share.changes;
        share.bytes += line->text.size() + 1;
        if (share.changes <= mostEntries && share.bytes <= mostBytes) staying.push_back(std::move(*line));
    }
    if (staying.size() == lines->size()) return Done();
    std::ranges::reverse(staying);
    return rewrite(staying);
}

// Whoever comes after a crash finds the old file or the new one, whole.
Result<Done> History::rewrite(const std::vector<Line>& lines) {
    if (lines.empty()) {
        if (::unlink(_path.c_str()) != 0 && errno != ENOENT) return problem("cannot delete", errorText(errno));
        return Done();
    }
    const std::string name = fs::path(_path).filename().string();
    // That of a process that was killed: ours is the turn.
    ::unlink((_path + ".new").c_str());
    auto file = NewFile::create(*_folder, name, ".new");
    if (!file) return file.error();
    std::string text;
    for (const Line& line : lines)
        text += line.text + "\n";
    if (const auto written = file->write(text); !written) return written;
    if (const auto durable = file->keep(); !durable) return durable;
    if (::rename(file->path().c_str(), _path.c_str()) == 0) return Done();
    const int error = errno;
    ::unlink(file->path().c_str());
    return problem("cannot write", errorText(error));
}

Result<Done> History::forget() {
    std::error_code missing;
    if (_folder && !fs::exists(_path, missing)) return Done();
    const auto turnTaken = takeTurn();
    if (!turnTaken) return turnTaken.error();
    auto lines = readLines();
    if (!lines) return lines.error();
    const auto isNewer = [](const Line& line) { return line.state == Line::State::newer; };
    if (std::ranges::any_of(*lines, isNewer)) {
        return problem("cannot read", "a newer version of the program has written it; delete the file by hand");
    }
    for (const Line& line : *lines) {
        if (line.state == Line::State::own && line.entry.kept) forgetCopy(*line.entry.kept);
    }
    // A damaged line may be anybody's.
    std::erase_if(*lines, [](const Line& line) { return line.state != Line::State::other; });
    return rewrite(*lines);
}

// Nothing but what was put there by us.
void History::forgetCopy(const KeptCopy& copy) const {
    const fs::path copies = fs::path(*_folder).parent_path() / "kept";
    if (!copy.isOnPhone && fs::path(copy.path).parent_path() == copies) ::unlink(copy.path.c_str());
}

}  // namespace hosts
