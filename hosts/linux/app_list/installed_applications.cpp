// SPDX-License-Identifier: MIT
#include "hosts/linux/app_list/installed_applications.h"

#include <optional>
#include <string_view>
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

// A folder of each application is listed and two files of it are read; a folder holds little more
// than the application itself.
constexpr FileRation ration = {
    .calls = 300'000,
    .names = 1'000'000,
    .bytes = std::size_t{512} << 20,
};

bool isApplicationFolder(std::string_view name) {
    constexpr std::string_view ending = ".app";
    return name.size() > ending.size() && name.ends_with(ending);
}

class ApplicationFinder {
public:
    ApplicationFinder(const platform::FileSystem& files, const platform::UIDevice& device, InstalledApplications known)
        : _files(files, ration), _device(device), _known(std::move(known)) {
        _knownByFolder.reserve(_known.size());
        for (auto& [identifier, application] : _known) {
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

    InstalledApplications take() { return std::move(_found); }

private:
    std::optional<InstalledApplication> applicationIn(const std::string& folder) {
        const auto known = _knownByFolder.find(folder);
        return known == _knownByFolder.end() ? readApplication(_files, folder, _device) : *known->second;
    }

    void addApplication(const std::string& folder, bool isSystem) {
        std::optional<InstalledApplication> application = applicationIn(folder);
        if (!application) return;
        application->isSystem = isSystem;
        std::string identifier = application->identifier;
        _found.try_emplace(std::move(identifier), std::move(*application));
    }

    RationedFiles _files;
    const platform::UIDevice& _device;
    InstalledApplications _known;
    std::unordered_map<std::string_view, const InstalledApplication*> _knownByFolder;
    InstalledApplications _found;
};

}  // namespace

InstalledApplications findInstalledApplications(const platform::FileSystem& files, const platform::UIDevice& device,
                                                InstalledApplications known) {
    ApplicationFinder finder(files, device, std::move(known));
    finder.addFolder(std::string(systemApplications), true);
    for (const std::string_view folder : userApplications) {
        finder.addFoldersBelow(std::string(folder));
    }
    return finder.take();
}

}  // namespace hosts
