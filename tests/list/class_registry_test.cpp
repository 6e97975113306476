// SPDX-License-Identifier: MIT
#include "platform/foundation/class_registry.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/kit/test_platform.h"

namespace list_test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Thing : platform::Object {
    explicit Thing(int given) : number(given) {}
    int number;
};

struct OtherThing : platform::Object {};

class Registry : public testing::Test {
protected:
    /// A class whose objects are numbered from 1, and which writes down each step.
    platform::Class numbered(const std::string& name) {
        return {name,
                [this, name](platform::Platform&) {
                    steps.push_back("make " + name);
                    return std::make_shared<Thing>(++made);
                },
                [this, name](platform::Platform&) { steps.push_back("initialize " + name); }};
    }

    std::vector<std::string> steps;
    int made = 0;
    kit::TestPlatform host;
    platform::ClassRegistry& classes = host.classes;
};

TEST_F(Registry, runsTheLoadStepOnceBeforeTheFirstUse) {
    classes.add(numbered("Thing"));
    EXPECT_THAT(steps, IsEmpty());
    classes.make<Thing>("Thing", host.services());
    classes.make<Thing>("Thing", host.services());
    classes.shared<Thing>("Thing", host.services());
    EXPECT_THAT(steps, ElementsAre("initialize Thing", "make Thing", "make Thing", "make Thing"));
}

TEST_F(Registry, takesALookForNoUse) {
    classes.add(numbered("Thing"));
    EXPECT_TRUE(classes.contains("Thing"));
    EXPECT_FALSE(classes.contains("thing"));
    EXPECT_FALSE(classes.contains(""));
    EXPECT_THAT(steps, IsEmpty());
}

TEST_F(Registry, runsTheLoadStepOfTheUsedClassAlone) {
    classes.add(numbered("Thing"));
    classes.add(numbered("Other"));
    classes.make<Thing>("Other", host.services());
    EXPECT_THAT(steps, ElementsAre("initialize Other", "make Other"));
}

TEST_F(Registry, needsNoLoadStep) {
    classes.add({"Thing", [](platform::Platform&) { return std::make_shared<Thing>(7); }});
    auto thing = classes.make<Thing>("Thing", host.services());
    ASSERT_TRUE(thing);
    EXPECT_EQ(thing->number, 7);
}

TEST_F(Registry, letsALoadStepUseItsOwnClassAndAddOthers) {
    platform::Class looping = numbered("Thing");
    looping.initialize = [this](platform::Platform& platform) {
        steps.push_back("initialize");
        classes.make<Thing>("Thing", platform);
        classes.add(numbered("Late"));
    };
    classes.add(looping);
    EXPECT_TRUE(classes.make<Thing>("Thing", host.services()));
    EXPECT_THAT(steps, ElementsAre("initialize", "make Thing", "make Thing"));
    EXPECT_TRUE(classes.contains("Late"));
}

TEST_F(Registry, handsTheLoadStepThePlatformThatTheObjectIsMadeFor) {
    platform::Platform* seen = nullptr;
    platform::Class watching = numbered("Thing");
    watching.initialize = [&seen](platform::Platform& platform) { seen = &platform; };
    classes.add(watching);
    classes.make<Thing>("Thing", host.services());
    EXPECT_EQ(seen, &host.services());
}

TEST_F(Registry, keepsTheFirstClassOfAName) {
    classes.add(numbered("Thing"));
    classes.add({"Thing", [](platform::Platform&) { return std::make_shared<OtherThing>(); }});
    EXPECT_TRUE(classes.make<Thing>("Thing", host.services()));
}

TEST_F(Registry, makesNothingOfAnUnknownName) {
    EXPECT_FALSE(classes.make<Thing>("Thing", host.services()));
    EXPECT_FALSE(classes.shared<Thing>("Thing", host.services()));
}

TEST_F(Registry, makesNothingOfAnotherKind) {
    classes.add(numbered("Thing"));
    EXPECT_FALSE(classes.make<OtherThing>("Thing", host.services()));
    EXPECT_FALSE(classes.shared<OtherThing>("Thing", host.services()));
    EXPECT_TRUE(classes.make<platform::Object>("Thing", host.services()));
}

TEST_F(Registry, makesANewObjectEachTimeButOneSharedOne) {
    classes.add(numbered("Thing"));
    EXPECT_NE(classes.make<Thing>("Thing", host.services()), classes.make<Thing>("Thing", host.services()));
    EXPECT_EQ(classes.shared<Thing>("Thing", host.services()), classes.shared<Thing>("Thing", host.services()));
}

TEST_F(Registry, knowsNothingOfAnotherPlatforms) {
    kit::TestPlatform other;
    classes.add(numbered("Thing"));
    EXPECT_FALSE(other.classes.contains("Thing"));
    other.classes.add(numbered("Thing"));
    classes.make<Thing>("Thing", host.services());
    other.classes.make<Thing>("Thing", other.services());
    EXPECT_THAT(steps, ElementsAre("initialize Thing", "make Thing", "initialize Thing", "make Thing"));
}

}  // namespace
}  // namespace list_test
