// SPDX-License-Identifier: MIT
#include "hosts/app_list/installed_applications.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <unordered_map>
#include <utility>

namespace hosts {
namespace {

constexpr std::string_view systemApplications = "/Applications";
constexpr std::string_view userApplications[] = {
    "/var/mobile/Containers/Bundle/Application",
    "/var/containers/Bundle/Application",
    "/var/mobile/Applications",
};

// Enough for a hundred thousand applications: a folder of each is listed and two files of it are
// read; a folder holds little more than the application itself.
constexpr FileRation ration = {
    .calls = 400'000,
    .names = 1'000'000,
    .bytes = std::size_t{512} << 20,
};
std::string rationSpent() {
    return "this and what comes after it is not looked at: the search for applications may ask for " +
           std::to_string(ration.calls) + " files and folders, list " + std::to_string(ration.names) +
           " names and read " + std::to_string(ration.bytes >> 20) + " MB";
}

bool isApplicationFolder(std::string_view name) {
    constexpr std::string_view ending = ".app";
    return name.size() > ending.size() && name.ends_with(ending);
}

class ApplicationFinder {
public:
    ApplicationFinder(const platform::FileSystem& files, InstalledApplications known, platform::FileListener* skips)
        : _files(files, ration), _known(std::move(known)), _skips(skips) {
        _found.reserve(_known.size());
        _knownByFolder.reserve(_known.size());
        for (InstalledApplication& application : _known) {
            _knownByFolder.emplace(application.folder, &application);
        }
    }

    void addFolder(const std::string& folder, bool isSystem) {
        for (const std::string& name : _files.listFolder(folder)) {
            if (isApplicationFolder(name)) addApplication(folder + "/" + name, isSystem);
        }
    }

    void addFoldersBelow(const std::string& folder) {
        for (const std::string& name : _files.listFolder(folder)) {
            addFolder(folder + "/" + name, false);
        }
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

private:
    bool isSpent() const { return !_files.firstRefused().empty(); }

    void addApplication(const std::string& folder, bool isSystem) {
        std::string problem;
        if (const auto known = _knownByFolder.extract(folder)) {
            _found.push_back(std::move(*known.mapped()));
        } else if (auto application = readApplication(_files, folder, problem)) {
            application->isSystem = isSystem;
            _found.push_back(*std::move(application));
        } else if (!isSpent()) {
            platform::tellPassedOver(_skips, folder, problem);
        }
    }

    RationedFiles _files;
    InstalledApplications _known;
    std::unordered_map<std::string_view, InstalledApplication*> _knownByFolder;
    InstalledApplications _found;
    platform::FileListener* _skips;
};

}  // namespace

const InstalledApplication* findApplication(const InstalledApplications& applications, std::string_view identifier) {
    const auto found = std::ranges::lower_bound(applications, identifier, {}, &InstalledApplication::identifier);
    return found != applications.end() && found->identifier == identifier ? &*found : nullptr;
}

InstalledApplications findInstalledApplications(const platform::FileSystem& files, InstalledApplications known,
                                                platform::FileListener* skips) {
    ApplicationFinder finder(files, std::move(known), skips);
    finder.addFolder(std::string(systemApplications), true);
    for (const std::string_view folder : userApplications) {
        finder.addFoldersBelow(std::string(folder));
    }
    return finder.take();
}

}  // namespace hosts
