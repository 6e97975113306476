// SPDX-License-Identifier: MIT
#include "mounted_phone.h"

#include <map>

namespace mounts_test {

namespace {

std::unique_ptr<Mount> lesser(const std::vector<std::string>& qualities) {
    return std::make_unique<LesserMount>(qualities);
}

std::unique_ptr<Mount> sshfs(const SshfsMount::Options& options) {
    return std::make_unique<SshfsMount>(options);
}

std::map<std::string, std::string> entries() {
    std::map<std::string, std::string> all{{"HotCorners", "<true/>"}, {"QuickSwitcher", "<true/>"}};
    for (int i = 10; i < 50; ++i)
        all.emplace("Mine" + std::to_string(i), "<string>kept</string>");
    return all;
}

}  // namespace

const std::vector<MountKind>& mountKinds() {
    static const std::vector<MountKind> kinds{
        {"Sshfs", [] { return sshfs({}); }},
        {"SshfsWithoutCache",
         [] {
             return sshfs({{"dir_cache=no"}, {}});
         }},
        {"SshfsOfDirectIo",
         [] {
             return sshfs({{"direct_io"}, {}});
         }},
        {"SshfsOfSynchronousWrites",
         [] {
             return sshfs({{"sshfs_sync"}, {}});
         }},
        {"SshfsWithoutHardLinks",
         [] {
             return sshfs({{"disable_hardlink"}, {}});
         }},
        {"SshfsWhoseServerReplacesNothing",
         [] {
             return sshfs({{}, {"-P", "posix-rename"}});
         },
         false},
        {"SshfsThatMovesAside",
         [] {
             return sshfs({{"workaround=rename"}, {"-P", "posix-rename"}});
         },
         false},
        {"Plain", [] { return lesser({}); }},
        {"RememberedSizes", [] { return lesser({"remembered-sizes"}); }},
        {"NoRenameOverNotPermitted", [] { return lesser({"no-rename-over=EPERM"}); }, false},
        {"NoRenameOverWhatExists", [] { return lesser({"no-rename-over=EEXIST"}); }, false},
        {"NoLinkCount", [] { return lesser({"no-link-count"}); }},
        {"NoOwners", [] { return lesser({"no-owners"}); }},
        {"NoDurableFolders", [] { return lesser({"failing-folder-fsync=EINVAL"}); }},
        {"Slow", [] { return lesser({"slow=2"}); }},
    };
    return kinds;
}

std::string manySettings() {
    return manySettingsBut({});
}

std::string manySettingsBut(const std::vector<std::pair<std::string, std::string>>& changed) {
    auto all = entries();
    for (const auto& [key, value] : changed)
        all.insert_or_assign(key, value);
    return settingsOf({all.begin(), all.end()});
}

}  // namespace mounts_test
