// SPDX-License-Identifier: MIT
#include "hosts/phones/history.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
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

// A line is "CHECKSUM VERSION OWNER CHANGE RECORD": the checksum of all behind it, which later versions keep as it is;
// the phone, as `owner` says it; the change's number; and the record as a binary property list in base64.
constexpr std::string_view lineVersion = "1";
constexpr std::size_t checksumLength = 16;

constexpr std::uint64_t changesBetweenTrims = 2000;
constexpr std::size_t bytesBetweenTrims = std::size_t{16} << 20;
// Of each phone, when the file is trimmed; until that is done again so much may come.
constexpr std::size_t mostBytes = (std::size_t{64} << 20) - bytesBetweenTrims;

constexpr std::size_t shortTail = 1024;

/// A line of the file, in the file's own bytes.
struct HistoryLine {
    enum class State { damaged, newer, whole };

    std::string_view text;
    State state = State::damaged;
    std::string_view owner = {};
    std::uint64_t change = 0;
    std::string_view record = {};
};

std::string_view takeWord(std::string_view& text) {
    const std::size_t end = std::min(text.find(' '), text.size());
    const std::string_view word = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return word;
}

HistoryLine lineOf(std::string_view text) {
    HistoryLine line{text};
    if (text.size() <= checksumLength || text[checksumLength] != ' ') return line;
    const std::string_view checksum = takeWord(text);
    if (textNumber(text) != checksum) return line;
    line.state = takeWord(text) == lineVersion ? HistoryLine::State::whole : HistoryLine::State::newer;
    line.owner = takeWord(text);
    const std::string_view change = takeWord(text);
    std::from_chars(change.data(), change.data() + change.size(), line.change);
    line.record = text;
    return line;
}

// What is behind the last newline was cut, or is still being written.
std::vector<HistoryLine> linesOf(std::string_view bytes) {
    std::vector<HistoryLine> lines;
    for (std::size_t end = 0; (end = bytes.find('\n')) != bytes.npos; bytes.remove_prefix(end + 1))
        lines.push_back(lineOf(bytes.substr(0, end)));
    return lines;
}

bool hasNewer(const std::vector<HistoryLine>& lines) {
    return std::ranges::find(lines, HistoryLine::State::newer, &HistoryLine::state) != lines.end();
}

// The last line that is ended; what was cut behind it goes with it.
std::string_view takeLastLine(std::string_view& text) {
    text = text.substr(0, text.rfind('\n') + 1);
    if (text.empty()) return text;
    const std::string_view lines = text.substr(0, text.size() - 1);
    const std::size_t start = lines.rfind('\n') + 1;
    text = text.substr(0, start);
    return lines.substr(start);
}

std::optional<HistoryEntry> decode(const HistoryLine& line) {
    if (line.state != HistoryLine::State::whole) return std::nullopt;
    const platform::Data bytes = platform::decodeBase64(line.record);
    const auto reading = platform::readPropertyList({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    const platform::Dictionary* root = reading ? reading.value->dictionary() : nullptr;
    return root ? entryOf(*root) : std::nullopt;
}

std::string encode(const HistoryEntry& entry, const std::string& owner) {
    const auto record = platform::writeBinaryPropertyList(platform::Value(recordOf(entry)));
    std::string line = std::string(lineVersion) + " " + owner + " " + std::to_string(entry.change) + " ";
    if (record) platform::appendBase64(line, std::as_bytes(std::span(*record.bytes)));
    return textNumber(line) + " " + line + "\n";
}

platform::Date timeNow() {
    const std::chrono::duration<double> now = std::chrono::system_clock::now().time_since_epoch();
    return dateOf(std::floor(now.count()));
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

/// How the file ends.
struct History::Tail {
    std::uint64_t lastChange = 0;
    std::size_t size = 0;  ///< without what was cut
};

History::History(Result<std::string> folder, std::string place, std::function<std::string()> mark)
    : _folder(std::move(folder)), _place(std::move(place)), _mark(std::move(mark)) {
    if (_folder) _path = *_folder + "/" + phoneFileName(_place);
}

Problem History::problem(const char* what, std::string reason) const {
    return _folder ? Problem{_path, what, std::move(reason)} : _folder.error();
}

const std::string& History::owner() {
    if (!_owner) _owner = textNumber(_place + "\n" + _mark());
    return *_owner;
}

Problem History::newerVersion(const char* what) const {
    return problem(what, "a newer version of the program has written it");
}

// Nothing where there is no file yet.
Result<std::string> History::readBytes() {
    if (!_folder) return _folder.error();
    std::error_code missing;
    if (!fs::exists(_path, missing) && !missing) return std::string();
    if (!fs::is_regular_file(_path, missing)) return problem("cannot read", "it is no regular file");
    errno = 0;
    auto bytes = platform::readSystemFile(_path);
    if (!bytes) return problem("cannot read", errorText(errno));
    return *std::move(bytes);
}

Result<History::Reading> History::read() {
    const auto bytes = readBytes();
    if (!bytes) return bytes.error();
    const std::vector<HistoryLine> lines = linesOf(*bytes);
    if (hasNewer(lines)) return newerVersion("cannot read");
    Reading reading;
    for (const HistoryLine& line : lines) {
        if (line.state == HistoryLine::State::whole && line.owner != owner()) {
            reading.otherPhones.insert(line.change);
        } else if (auto entry = decode(line)) {
            reading.entries.push_back(*std::move(entry));
        } else {
            ++reading.damagedLines;
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
        std::string_view rest = bytes;
        while (tail.lastChange == 0 && !rest.empty()) {
            const HistoryLine line = lineOf(takeLastLine(rest));
            if (line.state == HistoryLine::State::newer) return newerVersion("cannot write");
            tail.lastChange = line.change;
        }
        if (tail.lastChange > 0 || start == 0) return tail;
    }
}

Result<Done> History::trim() {
    const auto bytes = readBytes();
    if (!bytes) return bytes.error();
    const std::vector<HistoryLine> lines = linesOf(*bytes);
    if (hasNewer(lines)) return newerVersion("cannot write");
    struct Share {
        std::size_t changes = 0;
        std::size_t bytes = 0;
    };
    std::map<std::string_view, Share> shares;
    std::vector<std::string_view> staying;
    for (auto line = lines.rbegin(); line != lines.rend(); ++line) {
        if (line->state != HistoryLine::State::whole) continue;
        Share& share = shares[line->owner];
        ++share.changes;
        share.bytes += line->text.size() + 1;
        if (share.changes <= mostEntries && share.bytes <= mostBytes) staying.push_back(line->text);
    }
    std::string text;
    for (auto line = staying.rbegin(); line != staying.rend(); ++line)
        text.append(*line).append("\n");
    return text.size() == bytes->size() ? Done() : rewrite(text);
}

// Whoever comes after a crash finds the old file or the new one, whole.
Result<Done> History::rewrite(std::string_view text) {
    if (text.empty()) {
        if (::unlink(_path.c_str()) != 0 && errno != ENOENT) return problem("cannot delete", errorText(errno));
        return Done();
    }
    // That of a process that was killed: ours is the turn.
    ::unlink((_path + ".new").c_str());
    auto file = NewFile::create(*_folder, fs::path(_path).filename().string(), ".new");
    if (!file) return file.error();
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
    const auto bytes = readBytes();
    if (!bytes) return bytes.error();
    const std::vector<HistoryLine> lines = linesOf(*bytes);
    if (hasNewer(lines)) {
        return problem("cannot read", "a newer version of the program has written it; delete the file by hand");
    }
    // A damaged line may be anybody's.
    std::string others;
    for (const HistoryLine& line : lines) {
        if (line.state == HistoryLine::State::whole && line.owner != owner()) {
            others.append(line.text).append("\n");
        } else if (const auto entry = decode(line); entry && entry->kept) {
            forgetCopy(*entry->kept);
        }
    }
    return rewrite(others);
}

// Nothing but what was put there by us.
void History::forgetCopy(const KeptCopy& copy) const {
    const fs::path copies = fs::path(*_folder).parent_path() / "kept";
    if (!copy.isOnPhone && fs::path(copy.path).parent_path() == copies) ::unlink(copy.path.c_str());
}

}  // namespace hosts
