// SPDX-License-Identifier: MIT
#include "write_situations.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <map>

#include "settings_count.h"
#include "tests/kit/watched_calls.h"

namespace reliability_test {

using namespace kit;

namespace {

namespace fs = std::filesystem;

void makeOldFile(const std::string& file) {
    writeText(file, settingsNumber(1));
    fs::permissions(file, fs::perms{0640});
    // Without the right to give files away the write has no owner to keep; the rest is the same.
    (void)!::chown(file.c_str(), 501, 502);
}

void makeLinkedFile(const Phone& phone) {
    makeOldFile(phone / "store/real");
    fs::create_directories(phone.preferencesFolder());
    fs::create_symlink("/store/real", phone.settingsFile());
}

void makeAbandonedTemporary(const Phone& phone) {
    makeOldFile(phone.settingsFile());
    writeText(phone.preferencesFolder() + "/." + settingsName + ".abc234.tmp", settingsNumber(3).substr(0, 200));
}

std::string attributesText(uid_t owner, gid_t group, mode_t mode) {
    return std::to_string(owner) + ":" + std::to_string(group) + " " + std::to_string(mode);
}

}  // namespace

const std::vector<WriteSituation>& writeSituations() {
    static const std::string exceptions = "/var/mobile/Library/Preferences/com.fenwary.trivel3.exceptions.plist";
    static const std::vector<WriteSituation> all{
        {"old file", [](const Phone& phone) { makeOldFile(phone.settingsFile()); }},
        {"no file", [](const Phone& phone) { fs::create_directories(phone.preferencesFolder()); }, false},
        {"abandoned temporary file", makeAbandonedTemporary},
        {"link", makeLinkedFile, true, settingsPath, "store/real"},
        {"missing folders", [](const Phone&) {}, false},
        {"exceptions file", [](const Phone& phone) { makeOldFile(phone.folder + exceptions); }, true, exceptions}};
    return all;
}

std::string contentBefore(const WriteSituation& situation) {
    return situation.hasOldFile ? settingsNumber(1) : "(no file)";
}

std::string contentWanted() {
    return settingsNumber(2);
}

std::string attributesOf(const std::string& file) {
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0) return "";
    return attributesText(status.st_uid, status.st_gid, status.st_mode & 07777);
}

std::string attributesWanted(const WriteSituation& situation, const Phone& phone) {
    const std::string old = attributesOf(phone / situation.file);
    return !old.empty() ? old : attributesText(::geteuid(), ::getegid(), 0644);
}

std::vector<std::string> callsOfAWrite(const WriteSituation& situation) {
    const Phone phone;
    situation.prepare(phone);
    WatchedCalls calls;
    auto files = openPhone(phone.folder, calls);
    calls.forget();
    EXPECT_EQ(kit::replaceFile(files, situation.path, contentWanted()), "");
    EXPECT_EQ(readText(phone / situation.file), contentWanted());
    return calls.made();
}

std::string systemCallOf(const std::string& call) {
    static const std::map<std::string, std::string> names{{"openInRoot", "openat2"},
                                                          {"openIn", "openat"},
                                                          {"list", "openat (listing)"},
                                                          {"inspect", "openat (old file)"},
                                                          {"read", "read"},
                                                          {"write", "write"},
                                                          {"listAttributes", "flistxattr"},
                                                          {"readAttribute", "fgetxattr"},
                                                          {"setAttribute", "fsetxattr"},
                                                          {"synchronise", "fsync"},
                                                          {"changeMode", "fchmod"},
                                                          {"changeOwner", "fchown"},
                                                          {"lock", "flock"},
                                                          {"status", "statx"},
                                                          {"statusIn", "newfstatat"},
                                                          {"readLink", "readlinkat"},
                                                          {"rename", "renameat"},
                                                          {"makeFolder", "mkdirat"},
                                                          {"unlink", "unlinkat"},
                                                          {"close", "close"}};
    return names.at(call);
}

}  // namespace reliability_test
