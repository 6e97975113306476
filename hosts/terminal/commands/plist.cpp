// SPDX-License-Identifier: MIT
#include <cerrno>
#include <cstring>

#include "hosts/linux/phone_file_system.h"
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/exit_status.h"
#include "hosts/terminal/render/printable.h"
#include "hosts/terminal/render/value_json.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/system_file.h"

namespace hosts::terminal {
namespace {

std::string location(const platform::PropertyListReading& reading) {
    if (reading.format == platform::PropertyListFormat::binary) {
        return "offset " + std::to_string(reading.error.offset);
    }
    return std::to_string(reading.error.line) + ":" + std::to_string(reading.error.column);
}

std::string unreadable(const std::string& file) {
    return printable(file) + ": " + std::strerror(errno) + "; give the path of a file that can be read";
}

std::string malformed(const std::string& file, const platform::PropertyListReading& reading) {
    return printable(file) + ": " + location(reading) + ": " + printable(reading.error.reason);
}

// The value in the wanted format, or why it cannot be said in it.
std::optional<std::string> encode(const platform::Value& value, const std::string& format, std::string& error) {
    if (format == "json") {
        auto json = faithfulJsonOf(value, error);
        return json ? std::optional(jsonLine(*json) + "\n") : std::nullopt;
    }
    auto writing = format == "xml1" ? platform::writeXmlPropertyList(value) : platform::writeBinaryPropertyList(value);
    error = writing.reason;
    return std::move(writing.bytes);
}

// Replaces the file in one step, so that one that is converted in place survives a full disk.
bool replaceFile(const std::string& path, const std::string& bytes, std::string& error) {
    const std::size_t slash = path.rfind('/');
    const std::string folder = slash == path.npos ? "." : path.substr(0, slash + 1);
    auto files = PhoneFileSystem::open(folder, error);
    if (!files) return false;
    if (files->writeFileAtomically("/" + path.substr(slash == path.npos ? 0 : slash + 1), bytes)) return true;
    error = files->lastError();
    return false;
}

bool lint(const std::string& file) {
    errno = 0;
    auto bytes = platform::readSystemFile(file);
    if (!bytes) {
        print(unreadable(file) + "\n");
        return false;
    }
    const auto reading = platform::readPropertyList(*bytes);
    print(reading ? printable(file) + ": OK\n" : malformed(file, reading) + "\n");
    return static_cast<bool>(reading);
}

}  // namespace

int runPlistLint(const LintOptions& options) {
    bool allFine = true;
    for (const std::string& file : options.files)
        allFine = lint(file) && allFine;
    return allFine ? done : failed;
}

int runPlistConvert(const ConvertOptions& options) {
    errno = 0;
    auto bytes = platform::readSystemFile(options.file);
    if (!bytes) return fail(failed, unreadable(options.file));
    const auto reading = platform::readPropertyList(*bytes);
    if (!reading) return fail(failed, malformed(options.file, reading));
    std::string error;
    auto encoded = encode(*reading.value, options.format, error);
    if (!encoded) return fail(failed, printable(options.file) + ": " + error);
    if (options.output == "-") {
        print(*encoded);
        return done;
    }
    return replaceFile(options.output, *encoded, error) ? done : fail(failed, error);
}

}  // namespace hosts::terminal
