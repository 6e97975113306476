// SPDX-License-Identifier: MIT
#include "hosts/app_list/fetched_files.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace hosts {
namespace {

using platform::Result;
using platform::Stamp;

// Those of most phones, in one go.
constexpr std::size_t applicationsAtOnce = 256;
// An application names one icon or two; each has nine files at most.
constexpr std::size_t mostFiles = 8192;
constexpr std::size_t mostBytes = std::size_t{32} << 20;
// So that what the search reads leaves room for the icons.
constexpr std::size_t mostBytesOfSearch = mostBytes / 4;
constexpr std::size_t longestFetched = std::size_t{1} << 20;

}  // namespace

void FetchedFiles::fetchIconsFrom(const InstalledApplications& applications, const InstalledApplication& first,
                                  const IconTarget& target) {
    if (_folders.contains(first.folder)) return;
    std::vector<std::string> folders;
    const auto position = static_cast<std::size_t>(&first - applications.data());
    for (std::size_t step = 0; step < applications.size() && folders.size() < applicationsAtOnce; ++step) {
        const std::string& folder = applications[(position + step) % applications.size()].folder;
        if (_folders.insert(folder).second) folders.push_back(folder);
    }
    std::vector<std::string> infos;
    for (const std::string& folder : folders)
        infos.push_back(infoFile(folder));
    fetch(infos, mostBytes);
    std::vector<std::string> pictures;
    RationedFiles files(*this, {.calls = applicationsAtOnce, .names = 0, .bytes = mostBytes});
    for (const std::string& folder : folders) {
        for (const std::string& name : readIconNames(files, folder, target.device)) {
            for (const std::string& file : iconFileNames(name, target.scale, target.device)) {
                if (pictures.size() < mostFiles) pictures.push_back(folder + "/" + file);
            }
        }
    }
    fetch(pictures, mostBytes);
}

void FetchedFiles::expect(std::span<const std::string> files, std::span<const std::string> folders) const {
    if (files.empty()) return _phone.expect({}, folders);
    fetch(files, mostBytesOfSearch);
}

void FetchedFiles::fetch(std::span<const std::string> paths, std::size_t most) const {
    std::vector<std::string> missing;
    std::ranges::copy_if(paths, std::back_inserter(missing),
                         [this](const std::string& path) { return !_fetched.contains(path); });
    _phone.expect(missing, {});
    for (const std::string& path : missing) {
        if (_bytes >= most) return;
        std::string contents;
        const auto stamp = _phone.readFile(path, contents, longestFetched);
        _bytes += contents.size();
        // What is larger is no icon of a phone's. What may be readable later is asked for by whoever wants it.
        const bool isNowhere = !stamp && !stamp.error().isPassing;
        if (stamp || isNowhere) _fetched.insert_or_assign(path, stamp ? Bytes(std::move(contents)) : Bytes());
    }
}

Result<Stamp> FetchedFiles::readFile(std::string_view path, std::string& contents, std::size_t limit) const {
    const auto fetched = _fetched.find(path);
    if (fetched == _fetched.end()) return _phone.readFile(path, contents, limit);
    contents.clear();
    const bool isThere = fetched->second && fetched->second->size() <= limit;
    if (!isThere) return platform::Problem{std::string(path), "cannot read", "it is not there"};
    contents = *fetched->second;
    return Stamp{.size = contents.size()};
}

}  // namespace hosts
