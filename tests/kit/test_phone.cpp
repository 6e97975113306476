// SPDX-License-Identifier: MIT
#include "tests/kit/test_phone.h"

#include <cerrno>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "platform/foundation/property_list.h"

namespace kit {
namespace {

hosts::PhoneFileSystem openPhone(const std::filesystem::path& folder, hosts::FileCalls& calls) {
    std::filesystem::create_directories(folder / "var/mobile/Library/Preferences");
    auto files = hosts::PhoneFileSystem::open(folder, calls);
    if (!files) throw std::runtime_error(files.error().text());
    return *std::move(files);
}

}  // namespace

int TestPhone::Calls::rename(int folder, const char* from, const char* to) {
    if (!fail) return FileCalls::rename(folder, from, to);
    errno = EROFS;
    return -1;
}

TestPhone::TestPhone(EventLog& log) : _log(log), _files(openPhone(_folder.path(), _calls)) {}

platform::Result<platform::Stamp> TestPhone::look(std::string_view path) const {
    ++_reads[std::string(path)];
    return _files.look(path);
}

platform::Result<platform::Stamp> TestPhone::readFile(std::string_view path, std::string& contents,
                                                      std::size_t limit) const {
    ++_reads[std::string(path)];
    if (onRead) onRead(path);
    return _files.readFile(path, contents, limit);
}

platform::Result<std::vector<std::string>> TestPhone::listFolder(std::string_view path) const {
    return _files.listFolder(path);
}

platform::Result<platform::Stamp> TestPhone::changeFile(std::string_view path, const platform::Change& change) {
    ++_reads[std::string(path)];
    bool wasTried = false;
    const auto outcome = _files.changeFile(path, [&](std::optional<std::string_view> held) {
        auto wanted = change(held);
        wasTried = wanted.has_value();
        return wanted;
    });
    if (wasTried) _log.add(event::write(std::string(path), outcome.has_value()));
    return outcome;
}

std::size_t TestPhone::takeReads(std::string_view path) {
    return std::exchange(_reads[std::string(path)], 0);
}

std::filesystem::path TestPhone::machinePath(std::string_view path) const {
    return _folder.path() / std::filesystem::path(path).relative_path();
}

void TestPhone::put(std::string_view path, std::string_view bytes) {
    const std::filesystem::path file = machinePath(path);
    std::filesystem::create_directories(file.parent_path());
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!stream.flush()) throw std::runtime_error("cannot write " + file.string());
}

void TestPhone::put(std::string_view path, const platform::Dictionary& content) {
    put(path, std::string_view(platform::writeXmlPropertyList(platform::Value(content)).bytes.value()));
}

void TestPhone::remove(std::string_view path) {
    std::filesystem::remove_all(machinePath(path));
}

std::optional<std::string> TestPhone::bytes(std::string_view path) const {
    std::error_code unreadable;
    // Opening a FIFO would wait for a writer.
    if (!std::filesystem::is_regular_file(machinePath(path), unreadable)) return std::nullopt;
    std::ifstream stream(machinePath(path), std::ios::binary);
    if (!stream) return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

std::optional<platform::Dictionary> TestPhone::dictionary(std::string_view path) const {
    const auto content = bytes(path);
    if (!content) return std::nullopt;
    const auto reading = platform::readPropertyList(*content);
    if (!reading || !reading.value->dictionary()) return std::nullopt;
    return *reading.value->dictionary();
}

}  // namespace kit
