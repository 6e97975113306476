// SPDX-License-Identifier: MIT
// What `phone` tells of a mount: what it promises, as far as that is known before a change, and how far away it is.
#include "mounted_phone.h"
#include "tests/kit/expectations.h"

namespace mounts_test {
namespace {

struct ToldPromises : MountTest, testing::WithParamInterface<MountKind> {};

INSTANTIATE_TEST_SUITE_P(On, ToldPromises, testing::ValuesIn(mountKinds()),
                         [](const auto& kind) { return std::string(kind.param.name); });

TEST_P(ToldPromises, areNoMoreThanAMountKeeps) {
    const auto mount = GetParam().mount();
    use(*mount);
    const json facts = ctl.runForJson({"phone", "--json"});
    EXPECT_EQ(facts["kind"], "mount");
    EXPECT_GT(facts["roundTripMs"], 0);
    EXPECT_EQ(facts["promises"]["outlastsPowerLoss"], false);
    EXPECT_EQ(facts["promises"]["tellsChanges"], false);
    EXPECT_EQ(facts["promises"]["replacesInOneStep"], json());
    EXPECT_EQ(facts["promises"]["keepsOwners"], json());
}

TEST_F(MountTest, phoneThatHasGoneIsAFailureToTellOfIt) {
    SshfsMount mount;
    use(mount);
    writeSettings(mount.behind(), manySettings());
    EXPECT_EQ(ctl.run({"phone"}).status, 0);
    mount.killServer();
    EXPECT_EQ(ctl.run({"phone"}).status, 1);
}

}  // namespace
}  // namespace mounts_test
