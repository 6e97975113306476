// SPDX-License-Identifier: MIT
#include <cerrno>

#include "hosts/phones/fault_place.h"
#include "hosts/session/exit_status.h"
#include "hosts/system/error_text.h"
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/commands/output_file.h"
#include "hosts/terminal/render/printable.h"
#include "hosts/terminal/render/value_json.h"
#include "hosts/terminal/standard_output.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/system_file.h"
#include "platform/services/file_system.h"

namespace hosts::terminal {
namespace {

// What the pane reads of a settings file is read here too, and a device without end does not take all
// memory.
constexpr std::size_t mostBytes = platform::FileSystem::usualReadLimit;

std::optional<std::string> readInput(const std::string& file, std::string& error) {
    errno = 0;
    auto bytes = platform::readSystemFile(file, mostBytes + 1);
    if (!bytes) {
        error = file + ": " + errorText(errno) + "; give the path of a file that can be read";
    } else if (bytes->size() > mostBytes) {
        error = file + ": holds more than 64 MB, and no more is read";
        bytes.reset();
    }
    return bytes;
}

std::string malformed(const std::string& file, const platform::PropertyListReading& reading) {
    return printable(file) + ": " + faultPlace(reading.error) + ": " + printable(reading.error.reason);
}

// The value in the wanted format, or what it holds that cannot be said in it.
platform::PropertyListWriting encode(const platform::Value& value, const std::string& format) {
    if (format == "xml1") return platform::writeXmlPropertyList(value);
    if (format == "binary1") return platform::writeBinaryPropertyList(value);
    platform::PropertyListWriting writing;
    if (auto json = faithfulJsonOf(value, writing.reason)) writing.bytes = jsonLine(*json) + "\n";
    return writing;
}

bool lint(const std::string& file) {
    std::string error;
    const auto bytes = readInput(file, error);
    if (!bytes) {
        fail(failed, error);
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
    std::string error;
    const auto bytes = readInput(options.file, error);
    if (!bytes) return fail(failed, error);
    const auto reading = platform::readPropertyList(*bytes);
    if (!reading) return fail(failed, malformed(options.file, reading));
    const auto encoded = encode(*reading.value, options.format);
    if (!encoded) {
        return fail(failed, options.file + ": cannot be written as " + options.format + ": it holds " + encoded.reason);
    }
    if (options.output == "-") {
        print(*encoded.bytes);
        return done;
    }
    const auto written = writeOutputFile(options.output, *encoded.bytes);
    return written ? done : fail(failed, written.error());
}

}  // namespace hosts::terminal
