// SPDX-License-Identifier: MIT
#include <algorithm>
#include <string>
#include <string_view>

#include "hosts/phones/fault_place.h"
#include "hosts/session/exit_status.h"
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/commands/input_file.h"
#include "hosts/terminal/commands/output_file.h"
#include "hosts/terminal/render/printable.h"
#include "hosts/terminal/render/standard_output.h"
#include "hosts/terminal/render/value_json.h"
#include "hosts/terminal/travel/xml_form.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/utf8.h"

namespace hosts::terminal {
namespace {

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

// Such a character may stand in XML as it is: this reader takes it, others refuse the whole file.
std::string placeOf(char32_t character, std::string_view bytes) {
    std::string spelling;
    platform::appendUtf8(spelling, character);
    const std::size_t place = bytes.find(spelling);
    if (place == bytes.npos) return {};
    const std::string_view before = bytes.substr(0, place);
    const auto line = std::ranges::count(before, '\n') + 1;
    return std::to_string(line) + ":" + std::to_string(place - (before.rfind('\n') + 1) + 1) + ": ";
}

// What is wrong with the file's content; nothing where it is a property list that every reader takes.
std::string faultIn(const std::string& file, const std::string& bytes) {
    const auto reading = platform::readPropertyList(bytes);
    if (!reading) return malformed(file, reading);
    const bool isXml = reading.format == platform::PropertyListFormat::xml;
    const auto character = isXml ? characterXmlCannotSay(*reading.value) : std::nullopt;
    if (!character) return {};
    return printable(file) + ": " + placeOf(*character, bytes) + characterName(*character) +
           ", which XML cannot say: other readers change it or refuse the file";
}

bool lint(const std::string& file) {
    const auto bytes = readInputFile(file);
    if (!bytes) {
        fail(failed, bytes.error().text());
        return false;
    }
    const std::string name = file == "-" ? "standard input" : file;
    const std::string fault = faultIn(name, *bytes);
    print((fault.empty() ? printable(name) + ": OK" : fault) + "\n");
    return fault.empty();
}

}  // namespace

int runPlistLint(const LintOptions& options) {
    bool allFine = true;
    for (const std::string& file : options.files)
        allFine = lint(file) && allFine;
    return allFine ? done : failed;
}

int runPlistConvert(const ConvertOptions& options) {
    const auto bytes = readInputFile(options.file);
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
