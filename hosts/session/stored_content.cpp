// SPDX-License-Identifier: MIT
#include "hosts/session/stored_content.h"

#include <algorithm>
#include <memory>

#include "hosts/phones/fault_place.h"

namespace hosts {
namespace {

using platform::Dictionary;
using platform::Problem;
using platform::Result;

// A file system that cannot reach a file does not say whether there is one: its folder does, or the folder above.
bool mayBeThere(const platform::FileSystem& files, const std::string& path) {
    if (path.empty()) return true;
    const std::size_t slash = path.rfind('/');
    const auto names = files.listFolder(slash == 0 ? "/" : path.substr(0, slash));
    if (!names) return mayBeThere(files, path.substr(0, slash));
    return std::ranges::find(*names, path.substr(slash + 1)) != names->end();
}

}  // namespace

std::optional<Problem> whyNothing(const platform::FileSystem& files, const std::string& path) {
    std::string contents;
    const auto reading = files.readFile(path, contents);
    if (reading) {
        auto fault = dictionaryFault(contents);
        return fault ? std::optional(Problem{path, "cannot read", *std::move(fault)}) : std::nullopt;
    }
    const bool isProblem = reading.error().isPassing || mayBeThere(files, path);
    return isProblem ? std::optional(reading.error()) : std::nullopt;
}

Result<std::optional<Dictionary>> storedContent(const platform::FileSystem& files,
                                                platform::DictionaryFiles& dictionaries, const std::string& path) {
    if (const auto content = dictionaries.read(path)) return std::optional(*content);
    if (auto why = whyNothing(files, path)) return *std::move(why);
    return std::optional<Dictionary>();
}

}  // namespace hosts
