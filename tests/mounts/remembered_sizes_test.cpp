// SPDX-License-Identifier: MIT
// A mount answers with the size that a file had when it was looked at last, while the phone's side lets the file grow.
#include <chrono>
#include <filesystem>
#include <thread>

#include "mounted_phone.h"

namespace mounts_test {

namespace {

// How the phone's side writes a file.
enum class Growth { inPlace, byRenaming };

struct Case {
    const char* name;
    std::unique_ptr<Mount> (*mount)();
    Growth growth;
    /// Between the growing and the change: once the second is over for which the kernel remembers a file, it looks it
    /// up anew, and is told what sshfs has remembered, for twenty.
    std::chrono::milliseconds pause{0};
};

void PrintTo(const Case& tried, std::ostream* out) {
    *out << tried.name;
}

std::unique_ptr<Mount> usualSshfs() {
    return std::make_unique<SshfsMount>();
}

std::unique_ptr<Mount> lesserSystem() {
    return std::make_unique<LesserMount>(std::vector<std::string>{"remembered-sizes"});
}

constexpr std::chrono::milliseconds longerThanTheKernel{1100};

struct RememberedSize : MountTest, testing::WithParamInterface<Case> {};

INSTANTIATE_TEST_SUITE_P(On, RememberedSize,
                         testing::Values(Case{"SshfsAtOnceInPlace", usualSshfs, Growth::inPlace},
                                         Case{"SshfsAtOnceByRenaming", usualSshfs, Growth::byRenaming},
                                         Case{"SshfsLaterInPlace", usualSshfs, Growth::inPlace, longerThanTheKernel},
                                         Case{"SshfsLaterByRenaming", usualSshfs, Growth::byRenaming,
                                              longerThanTheKernel},
                                         Case{"LesserInPlace", lesserSystem, Growth::inPlace},
                                         Case{"LesserByRenaming", lesserSystem, Growth::byRenaming}),
                         [](const auto& tried) { return tried.param.name; });

void write(const Phone& phone, const std::string& content, Growth growth) {
    if (growth == Growth::inPlace) return writeSettings(phone, content);
    writeText(phone.settingsFile() + ".new", content);
    std::filesystem::rename(phone.settingsFile() + ".new", phone.settingsFile());
}

TEST_P(RememberedSize, costsNoSettingWhenTheFileHasGrown) {
    const auto mount = GetParam().mount();
    use(*mount);
    writeSettings(mount->behind(), manySettings());
    EXPECT_EQ(ctl.run({"get", "HotCorners"}).output, "true\n");

    write(mount->behind(), manySettingsBut({{"Grown", "<string>on the phone</string>"}}), GetParam().growth);
    std::this_thread::sleep_for(GetParam().pause);
    const Outcome outcome = ctl.run({"set", "HotCorners", "off"});

    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(readSettings(mount->behind()),
              manySettingsBut({{"Grown", "<string>on the phone</string>"}, {"HotCorners", "<false/>"}}));
}

TEST_P(RememberedSize, hidesNothingOfAFileThatHasGrown) {
    const auto mount = GetParam().mount();
    use(*mount);
    writeSettings(mount->behind(), manySettings());
    EXPECT_EQ(ctl.run({"get", "HotCorners"}).output, "true\n");

    write(mount->behind(), manySettingsBut({{"Grown", "<string>on the phone</string>"}, {"HotCorners", "<false/>"}}),
          GetParam().growth);
    std::this_thread::sleep_for(GetParam().pause);
    EXPECT_EQ(ctl.run({"get", "HotCorners"}).output, "false\n");
}

}  // namespace
}  // namespace mounts_test
