// SPDX-License-Identifier: MIT
// Of what the phone's own side changes, a mount tells nothing.
#include "hosts/phones/phone_mark.h"
#include "mounted_phone.h"
#include "tests/kit/expectations.h"
#include "tests/kit/private_bus.h"

namespace mounts_test {

namespace {

struct QuietDevice final : platform::DeviceQuery {
    std::optional<platform::Value> copyAnswer(std::string_view) override { return std::nullopt; }
};

struct OutsideChanges : MountTest, testing::WithParamInterface<MountKind> {};

INSTANTIATE_TEST_SUITE_P(On, OutsideChanges, testing::ValuesIn(mountKinds()),
                         [](const auto& kind) { return std::string(kind.param.name); });

TEST_P(OutsideChanges, areToldOfAllTheSame) {
    const PrivateBus bus;
    const auto mount = GetParam().mount();
    use(*mount);
    ctl.set("DBUS_SESSION_BUS_ADDRESS", bus.address());
    writeSettings(mount->behind(), manySettings());
    RunningTrivel3ctl monitor(ctl, {"monitor", "--unannounced"});
    for (auto line = monitor.readErrorLine(); line != "listening"; line = monitor.readErrorLine())
        ASSERT_TRUE(line);
    // As many bytes as before, so that only reading tells.
    writeSettings(mount->behind(), manySettingsBut({{"Key7", "<string>value 8</string>"}}));
    EXPECT_EQ(monitor.readLine(), "unannounced");
}

TEST_P(OutsideChanges, areLeftAloneByAnUndo) {
    const auto mount = GetParam().mount();
    use(*mount);
    writeSettings(mount->behind(), manySettings());
    EXPECT_EQ(ctl.run({"set", "HotCorners", "off"}).status, 0);
    writeSettings(mount->behind(), manySettingsBut({{"HotCorners", "<false/>"}, {"Mine", "<true/>"}}));
    EXPECT_EQ(ctl.run({"undo"}).status, 0);
    EXPECT_EQ(readSettings(mount->behind()), manySettingsBut({{"Mine", "<true/>"}}));
}

// The id of their file system is 0.
TEST_F(MountTest, areKnownByTypeAndSource) {
    const auto markOf = [](const Mount& mount) {
        QuietDevice device;
        return hosts::phoneMark(kit::openPhone(mount.folder()).root(), device);
    };
    EXPECT_THAT(markOf(SshfsMount()), testing::StartsWith("fuse.sshfs "));
    EXPECT_THAT(markOf(LesserMount({})), testing::StartsWith("fuse"));
}

}  // namespace

}  // namespace mounts_test
