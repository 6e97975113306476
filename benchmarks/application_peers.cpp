// SPDX-License-Identifier: MIT
#include "benchmarks/application_peers.h"

#include <dirent.h>
#include <fcntl.h>
#include <plist/plist.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <string_view>

namespace benchmarks {
namespace {

constexpr const char* systemApplications = "/Applications";
constexpr const char* userApplications = "/var/mobile/Containers/Bundle/Application";

struct PlistDeleter {
    void operator()(void* plist) const { plist_free(plist); }
};
using Plist = std::unique_ptr<void, PlistDeleter>;

std::vector<std::string> list(const std::string& folder) {
    std::vector<std::string> names;
    DIR* stream = ::opendir(folder.c_str());
    if (!stream) return names;
    while (const dirent* entry = ::readdir(stream)) {
        if (entry->d_name[0] != '.') names.emplace_back(entry->d_name);
    }
    ::closedir(stream);
    return names;
}

void forEachApplicationIn(const std::string& folder, const std::function<void(const std::string&)>& visit) {
    for (const std::string& name : list(folder)) {
        if (name.ends_with(".app")) visit(folder + "/" + name);
    }
}

void forEachApplication(const std::string& phone, const std::function<void(const std::string&)>& visit) {
    forEachApplicationIn(phone + systemApplications, visit);
    for (const std::string& name : list(phone + userApplications))
        forEachApplicationIn(phone + userApplications + "/" + name, visit);
}

Plist parse(const std::string& file, std::vector<char>& bytes) {
    const std::size_t length = readBare(file, bytes);
    plist_t root = nullptr;
    if (length > 0) plist_from_memory(bytes.data(), static_cast<std::uint32_t>(length), &root);
    return Plist(root);
}

std::string textOf(plist_t node) {
    if (!node || plist_get_node_type(node) != PLIST_STRING) return {};
    std::uint64_t length = 0;
    const char* text = plist_get_string_ptr(node, &length);
    return {text, static_cast<std::size_t>(length)};
}

std::string textUnder(plist_t dictionary, const char* key) {
    if (!dictionary || plist_get_node_type(dictionary) != PLIST_DICT) return {};
    return textOf(plist_dict_get_item(dictionary, key));
}

std::vector<std::string> iconNamesOf(plist_t info) {
    std::vector<std::string> names;
    const plist_t files = plist_access_path(info, 3, "CFBundleIcons", "CFBundlePrimaryIcon", "CFBundleIconFiles");
    if (!files || plist_get_node_type(files) != PLIST_ARRAY) return names;
    for (std::uint32_t index = 0; index < plist_array_get_size(files); ++index)
        names.push_back(textOf(plist_array_get_item(files, index)));
    return names;
}

std::string displayNameOf(plist_t info, plist_t english) {
    for (const char* key : {"CFBundleDisplayName", "CFBundleName"}) {
        for (const plist_t source : {english, info}) {
            std::string name = textUnder(source, key);
            if (!name.empty()) return name;
        }
    }
    return {};
}

plist_t ticksIn(plist_t root, const TickPlace& place) {
    if (!root || place.outerKey.empty()) return root;
    return plist_dict_get_item(root, place.outerKey.c_str());
}

bool isTicked(plist_t ticks, const std::string& identifier) {
    std::uint8_t flag = 0;
    if (ticks) plist_get_bool_val(plist_dict_get_item(ticks, identifier.c_str()), &flag);
    return flag != 0;
}

// Kept, as a program would that reads file after file.
std::vector<char>& buffer() {
    static std::vector<char> bytes;
    return bytes;
}

}  // namespace

std::size_t readBare(const std::string& file, std::vector<char>& bytes) {
    const int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) return 0;
    struct stat status;
    ssize_t count = 0;
    if (::fstat(descriptor, &status) == 0) {
        const auto size = static_cast<std::size_t>(status.st_size);
        if (bytes.size() < size) bytes.resize(size);
        count = ::read(descriptor, bytes.data(), size);
    }
    ::close(descriptor);
    return count > 0 ? static_cast<std::size_t>(count) : 0;
}

PeerApplications findWithLibplist(const std::string& phone) {
    PeerApplications found;
    forEachApplication(phone, [&](const std::string& folder) {
        const Plist info = parse(folder + "/Info.plist", buffer());
        const Plist english = parse(folder + "/en.lproj/InfoPlist.strings", buffer());
        const std::string identifier = textUnder(info.get(), "CFBundleIdentifier");
        if (identifier.empty()) return;
        found[identifier] = {displayNameOf(info.get(), english.get()), folder, iconNamesOf(info.get())};
    });
    return found;
}

std::size_t findWithBareCalls(const std::string& phone) {
    std::size_t files = 0;
    forEachApplication(phone, [&](const std::string& folder) {
        for (const char* name : {"/Info.plist", "/en.lproj/InfoPlist.strings"})
            files += readBare(folder + name, buffer()) > 0 ? 1 : 0;
    });
    return files;
}

std::size_t listWithBareCalls(const std::string& phone) {
    std::size_t applications = 0;
    forEachApplication(phone, [&](const std::string&) { ++applications; });
    return applications;
}

bool readTickWithLibplist(const TickPlace& place, const std::string& identifier) {
    const Plist root = parse(place.file, buffer());
    return isTicked(ticksIn(root.get(), place), identifier);
}

std::size_t readTicksWithLibplist(const TickPlace& place, const std::vector<std::string>& identifiers) {
    const Plist root = parse(place.file, buffer());
    std::size_t set = 0;
    for (const std::string& identifier : identifiers)
        set += isTicked(ticksIn(root.get(), place), identifier) ? 1 : 0;
    return set;
}

bool replaceFile(const std::string& file, const char* bytes, std::size_t length, TickFlush flush) {
    const std::string temporary = file + ".tmp";
    const int descriptor = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    if (descriptor < 0) return false;
    bool written = ::write(descriptor, bytes, length) == static_cast<ssize_t>(length);
    if (flush != TickFlush::nothing) written = ::fsync(descriptor) == 0 && written;
    ::close(descriptor);
    written = written && ::rename(temporary.c_str(), file.c_str()) == 0;
    if (flush == TickFlush::nothing) return written;
    const std::string parent = std::filesystem::path(file).parent_path().string();
    const int folder = ::open(parent.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    written = ::fsync(folder) == 0 && written;
    ::close(folder);
    return written;
}

bool writeTickWithLibplist(const TickPlace& place, const std::string& identifier, bool ticked, TickFlush flush) {
    const Plist root = parse(place.file, buffer());
    const plist_t ticks = ticksIn(root.get(), place);
    if (!ticks) return false;
    plist_dict_set_item(ticks, identifier.c_str(), plist_new_bool(ticked ? 1 : 0));
    char* xml = nullptr;
    std::uint32_t length = 0;
    plist_to_xml(root.get(), &xml, &length);
    const bool written = xml && replaceFile(place.file, xml, length, flush);
    std::free(xml);
    return written;
}

}  // namespace benchmarks
