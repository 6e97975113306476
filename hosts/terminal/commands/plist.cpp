// SPDX-License-Identifier: MIT
#include <cerrno>

#include "hosts/phones/fault_place.h"
#include "hosts/session/exit_status.h"
#include "hosts/system/error_text.h"
#include "hosts/system/named_file.h"
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/commands/output_file.h"
#include "hosts/terminal/render/printable.h"
#include "hosts/terminal/render/standard_output.h"
#include "hosts/terminal/render/value_json.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/system_file.h"
#include "platform/services/file_system.h"

namespace hosts::terminal {
namespace {

// What the pane reads of a settings file is read here too, and a device without end does not take all
// memory.
constexpr std::size_t mostBytes = platform::FileSystem::usualReadLimit;

platform::Result<std::string> readInput(const std::string& file) {
    if (const auto thing = namedInPlaceOfFile(file)) {
        return platform::Problem{
            file, {}, "it is " + *thing + ", not a file; what a program prints can be read as /dev/stdin"};
    }
    errno = 0;
    auto bytes = platform::readSystemFile(file, mostBytes + 1);
    if (!bytes) return platform::Problem{file, {}, errorText(errno) + "; give the path of a file that can be read"};
    if (bytes->size() > mostBytes) return platform::Problem{file, {}, "holds more than 64 MB, and no more is read"};
    return *std::move(bytes);
}

std::string malformed(const std::string& file, const platform::PropertyListReading& reading) {
    return printable(file) + ": " + faultPlace(reading.error) + ": " + printable(reading.error.reason);
}

// The value in the wanted format, or what it holds that cannot be said in it.
platform::Result<std::string> encode(const platform::Value& value, const std::string& format) {
    if (format == "json") {
        const auto json = faithfulJsonOf(value);
        if (!json) return json.error();
        return jsonLine(*json) + "\n";
    }
    auto writing = format == "xml1" ? platform::writeXmlPropertyList(value) : platform::writeBinaryPropertyList(value);
    if (!writing) return platform::Problem{.reason = writing.reason};
    return *std::move(writing.bytes);
}

bool lint(const std::string& file) {
    const auto bytes = readInput(file);
    if (!bytes) {
        fail(failed, bytes.error().text());
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
    const auto bytes = readInput(options.file);
    if (!bytes) return fail(failed, bytes.error().text());
    const auto reading = platform::readPropertyList(*bytes);
    if (!reading) return fail(failed, malformed(options.file, reading));
    const auto encoded = encode(*reading.value, options.format);
    if (!encoded) {
        return fail(failed,
                    options.file + ": cannot be written as " + options.format + ": it holds " + encoded.error().reason);
    }
    if (options.output == "-") {
        print(*encoded);
        return done;
    }
    const auto written = writeOutputFile(options.output, *encoded);
    return written ? done : fail(failed, written.error());
}

}  // namespace hosts::terminal
