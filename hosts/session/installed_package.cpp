// SPDX-License-Identifier: MIT
#include "hosts/session/installed_package.h"

#include <algorithm>

#include "platform/foundation/ascii.h"

namespace hosts {
namespace {

std::string_view takeLine(std::string_view& text) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

/// A package's paragraph of the database.
struct Paragraph {
    std::string_view package = {};
    std::string_view status = "installed";
    std::string_view version = {};

    void take(std::string_view line) {
        const std::size_t colon = std::min(line.find(':'), line.size());
        const std::string_view field = line.substr(0, colon);
        const std::string_view value = platform::trimmed(line.substr(std::min(colon + 1, line.size())));
        if (platform::equalInAnyCase(field, "Package")) package = value;
        if (platform::equalInAnyCase(field, "Status")) status = value;
        if (platform::equalInAnyCase(field, "Version")) version = value;
    }

    // "install ok installed" is; "deinstall ok config-files" and "install ok not-installed" are not.
    bool isInstalled() const { return status == "installed" || status.ends_with(" installed"); }
};

}  // namespace

std::optional<std::string> installedVersion(std::string_view database, std::string_view package) {
    while (!database.empty()) {
        Paragraph paragraph;
        for (std::string_view line = takeLine(database); !platform::trimmed(line).empty(); line = takeLine(database))
            paragraph.take(line);
        const bool isFound = paragraph.package == package && paragraph.isInstalled() && !paragraph.version.empty();
        if (isFound) return std::string(paragraph.version);
    }
    return std::nullopt;
}

}  // namespace hosts
