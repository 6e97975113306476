// SPDX-License-Identifier: MIT
#include "hosts/app_list/installed_applications.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <span>
#include <utility>
#include <vector>

#include "hosts/app_list/strings_file.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/utf8.h"

namespace hosts {
namespace {

constexpr std::string_view systemApplications = "/Applications";
constexpr std::string_view userApplications[] = {
    "/var/mobile/Containers/Bundle/Application",
    "/var/containers/Bundle/Application",
    "/var/mobile/Applications",
};

// Enough for a hundred thousand applications: a folder of each is listed and two files of it are looked at,
// and then read; a folder holds little more than the application itself.
constexpr FileRation ration = {
    .calls = 500'000,
    .names = 1'000'000,
    .bytes = std::size_t{512} << 20,
};
std::string rationSpent() {
    return "this and what comes after it is not looked at: the search for applications may ask for " +
           std::to_string(ration.calls) + " files and folders, list " + std::to_string(ration.names) +
           " names and read " + std::to_string(ration.bytes >> 20) + " MB";
}

// Far above any that an application comes with.
constexpr std::size_t longestInfo = std::size_t{1} << 20;
constexpr std::size_t longestIdentifier = 1024;
constexpr std::string_view folderEnding = ".app";

bool isApplicationFolder(std::string_view name) {
    return name.size() > folderEnding.size() && name.ends_with(folderEnding);
}

std::string_view textForKey(const platform::Dictionary& dictionary, std::string_view key) {
    const platform::Value* value = dictionary.find(key);
    return value && value->string() ? std::string_view(*value->string()) : std::string_view();
}

std::string englishNamesFile(const std::string& folder) {
    return folder + "/en.lproj/InfoPlist.strings";
}

platform::Dictionary readEnglishNames(RationedFiles& files, const std::string& folder,
                                      std::optional<platform::Stamp>& stamp) {
    std::string& bytes = files.room();
    stamp = files.readFile(englishNamesFile(folder), bytes, longestInfo);
    if (!stamp) return {};
    return readStringsFile(bytes).value_or(platform::Dictionary());
}

// The identifier becomes a key of XML property lists, which cannot say control characters.
bool isUsableIdentifier(std::string_view identifier) {
    const auto isControl = [](char byte) { return static_cast<std::uint8_t>(byte) < 0x20 || byte == 0x7F; };
    return !identifier.empty() && identifier.size() <= longestIdentifier && std::ranges::none_of(identifier, isControl);
}

bool isControlOrLineBreak(char32_t code) {
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || code == 0x2028 || code == 0x2029;
}

// A name as it can stand in a row: one line, cut between characters, with a space for each control
// character and line break. Empty when nothing but blanks is left.
std::string oneLineName(std::string_view name) {
    std::string line;
    while (!name.empty()) {
        const platform::Utf8Character next = platform::firstUtf8Character(name);
        if (line.size() + next.length > longestName) break;
        line += isControlOrLineBreak(next.code) ? std::string_view(" ") : name.substr(0, next.length);
        name.remove_prefix(next.length);
    }
    return line.find_first_not_of(' ') == line.npos ? std::string() : line;
}

// Text in the place of a folder's name, which is bytes, and need not be UTF-8.
std::string textOfFileName(std::string_view name) {
    if (platform::isValidUtf8(name)) return std::string(name);
    std::string text;
    for (const char byte : name)
        text += static_cast<std::uint8_t>(byte) < 0x80 ? std::string(1, byte) : "\uFFFD";
    return text;
}

// Key by key, the English text stands in for that of the Info.plist.
std::string displayName(const platform::Dictionary& info, const platform::Dictionary& english,
                        std::string_view folder) {
    for (const std::string_view key : {"CFBundleDisplayName", "CFBundleName"}) {
        for (const platform::Dictionary* source : {&english, &info}) {
            std::string name = oneLineName(textForKey(*source, key));
            if (!name.empty()) return name;
        }
    }
    folder.remove_prefix(folder.rfind('/') + 1);
    folder.remove_suffix(folderEnding.size());
    return oneLineName(textOfFileName(folder));
}

// Whether reading the file now would give what was read when it had that stamp. A file that could not be read, and is
// not there now, still gives nothing.
bool isUnchanged(RationedFiles& files, const std::string& path, const std::optional<platform::Stamp>& read) {
    if (read && !read->isSettled) return false;
    const auto now = files.look(path);
    return read ? now && now->isSameAs(*read) : !now;
}

class ApplicationFinder {
public:
    ApplicationFinder(const platform::FileSystem& files, InstalledApplications known, platform::FileListener* skips)
        : _files(files, ration), _known(std::move(known)), _skips(skips) {
        _found.reserve(_known.size());
        for (const InstalledApplication& application : _known) {
            _knownByFolder.emplace(application.folder, &application);
        }
    }

    InstalledApplications find() {
        addFolders();
        for (std::size_t at = 0; at < _folders.size(); ++at) {
            if (isTimeToExpect(at)) expectFilesFrom(at);
            addApplication(_folders[at].path, _folders[at].isSystem);
        }
        return take();
    }

private:
    struct Folder {
        std::string path;
        bool isSystem;
    };

    // Of many not all is held at once.
    static constexpr std::size_t expectedAtOnce = 256;
    bool isTimeToExpect(std::size_t at) const { return _files.isFar() && at % expectedAtOnce == 0; }

    template <class Thing>
    static std::span<const Thing> someFrom(const std::vector<Thing>& all, std::size_t first) {
        return std::span(all).subspan(first).first(std::min(expectedAtOnce, all.size() - first));
    }

    void addFolders() {
        std::vector<std::string> outer{std::string(systemApplications)};
        outer.insert(outer.end(), std::begin(userApplications), std::end(userApplications));
        _files.expect({}, outer);
        addFoldersIn(outer.front(), true);
        std::vector<std::string> inner;
        for (const std::string& folder : std::span(outer).subspan(1)) {
            for (const std::string& name : _files.listFolder(folder))
                inner.push_back(folder + "/" + name);
        }
        for (std::size_t at = 0; at < inner.size(); ++at) {
            if (isTimeToExpect(at)) _files.expect({}, someFrom(inner, at));
            addFoldersIn(inner[at], false);
        }
    }

    void addFoldersIn(const std::string& folder, bool isSystem) {
        for (const std::string& name : _files.listFolder(folder)) {
            if (isApplicationFolder(name)) _folders.push_back({folder + "/" + name, isSystem});
        }
    }

    void expectFilesFrom(std::size_t first) {
        std::vector<std::string> files;
        for (const Folder& folder : someFrom(_folders, first)) {
            files.push_back(infoFile(folder.path));
            files.push_back(englishNamesFile(folder.path));
        }
        _files.expect(files, {});
    }

    InstalledApplications take() {
        std::ranges::stable_sort(_found, {}, &InstalledApplication::identifier);
        const auto repeats = [this](const InstalledApplication& one, const InstalledApplication& next) {
            if (one.identifier != next.identifier) return false;
            platform::tellPassedOver(_skips, next.folder, one.folder + " has the same identifier, " + one.identifier);
            return true;
        };
        _found.erase(std::unique(_found.begin(), _found.end(), repeats), _found.end());
        if (isSpent()) platform::tellPassedOver(_skips, _files.firstRefused(), rationSpent());
        return std::move(_found);
    }

    bool isSpent() const { return !_files.firstRefused().empty(); }

    bool isAsRead(const InstalledApplication& application) {
        return isUnchanged(_files, infoFile(application.folder), application.sources.info) &&
               isUnchanged(_files, englishNamesFile(application.folder), application.sources.englishNames);
    }

    void addApplication(const std::string& folder, bool isSystem) {
        const auto known = _knownByFolder.find(folder);
        if (known != _knownByFolder.end() && isAsRead(*known->second)) {
            _found.push_back(*known->second);
            return;
        }
        auto application = readApplication(_files, folder);
        if (application) {
            application->isSystem = isSystem;
            _found.push_back(*std::move(application));
        } else if (!isSpent()) {
            platform::tellPassedOver(_skips, folder, application.error().reason);
        }
    }

    RationedFiles _files;
    std::vector<Folder> _folders;
    InstalledApplications _known;
    std::map<std::string_view, const InstalledApplication*> _knownByFolder;
    InstalledApplications _found;
    platform::FileListener* _skips;
};

}  // namespace

std::string infoFile(const std::string& folder) {
    return folder + "/Info.plist";
}

std::optional<platform::Dictionary> readInfo(RationedFiles& files, const std::string& folder,
                                             std::span<const std::string_view> keys,
                                             std::optional<platform::Stamp>* stamp) {
    std::string& bytes = files.room();
    const auto read = files.readFile(infoFile(folder), bytes, longestInfo);
    if (!read) return {};
    if (stamp) *stamp = read;
    return platform::readRootKeys(bytes, keys);
}

platform::Result<InstalledApplication> readApplication(RationedFiles& files, const std::string& folder) {
    constexpr std::string_view keys[] = {"CFBundleIdentifier", "CFBundleDisplayName", "CFBundleName"};
    ApplicationSources sources;
    const std::optional<platform::Dictionary> info = readInfo(files, folder, keys, &sources.info);
    if (!info) return platform::Problem{folder, {}, "it has no Info.plist that can be read"};
    const std::string_view identifier = textForKey(*info, "CFBundleIdentifier");
    if (!isUsableIdentifier(identifier)) {
        return platform::Problem{folder, {}, "its Info.plist has no usable CFBundleIdentifier"};
    }
    const platform::Dictionary english = readEnglishNames(files, folder, sources.englishNames);
    return InstalledApplication{std::string(identifier), displayName(*info, english, folder), folder, false, sources};
}

const InstalledApplication* findApplication(const InstalledApplications& applications, std::string_view identifier) {
    const auto found = std::ranges::lower_bound(applications, identifier, {}, &InstalledApplication::identifier);
    return found != applications.end() && found->identifier == identifier ? &*found : nullptr;
}

InstalledApplications findInstalledApplications(const platform::FileSystem& files, InstalledApplications known,
                                                platform::FileListener* skips) {
    return ApplicationFinder(files, std::move(known), skips).find();
}

}  // namespace hosts
