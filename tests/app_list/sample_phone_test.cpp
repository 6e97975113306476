// SPDX-License-Identifier: MIT
// What the service reports of the phone that new users start with.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>

#include "phone_applications.h"

namespace app_list_test {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::IsSupersetOf;
using testing::Pair;
using testing::SizeIs;

class SamplePhoneApplications : public testing::TestWithParam<kit::Shape> {
protected:
    SamplePhoneApplications() : platform(GetParam()) {
        std::filesystem::copy(TRIVEL3_SAMPLE_PHONE, platform.phone.machinePath("/"),
                              std::filesystem::copy_options::recursive);
        EXPECT_TRUE(loadAppList(platform));
    }

    kit::TestPlatform platform;
};

INSTANTIATE_TEST_SUITE_P(EveryScale, SamplePhoneApplications,
                         testing::Values(kit::tallPhone, kit::largePhone, kit::tablet));

TEST_P(SamplePhoneApplications, areAllListed) {
    EXPECT_THAT(appList(platform)->applications(), SizeIs(25));
    EXPECT_THAT(appList(platform)->applicationsFilteredBySystem(true),
                AllOf(SizeIs(13), Contains(Pair("com.apple.mobilesafari", "Safari"))));
    EXPECT_THAT(appList(platform)->applicationsFilteredBySystem(false), SizeIs(12));
}

TEST_P(SamplePhoneApplications, bearTheNamesThatThePhoneWouldShow) {
    EXPECT_THAT(
        appList(platform)->applicationsFilteredBySystem(false),
        ElementsAre(Pair("Com.Tessaworks.Ledger", "Ledger"), Pair("co.sundial.pocket", "pocket sundial"),
                    Pair("com.ExampleWorks.CompassRose", "Compass Rose"), Pair("com.a.omega", "Zulu"),
                    Pair("com.apple.DemoApp", "Store Demo"), Pair("com.b.zeta", "Alpha"),
                    Pair("com.hollowbyte.chessnut", "Chessnut"), Pair("de.waldmeister.wanderkarte", "Wanderkarte"),
                    Pair("io.kettlecroft.timer", "Kettle"), Pair("net.pellworm.ferry", "Ferry Times"),
                    Pair("org.nightheron.tide", "Night Tide"), Pair("se.lindqvist.blabar", "Blåbär & Co")));
}

TEST_P(SamplePhoneApplications, haveTheirIconsInTheScreensScale) {
    const auto service = appList(platform);
    const auto side = static_cast<std::uint32_t>(29 * GetParam().scale);
    std::set<std::string> withIcon;
    for (const auto& [identifier, name] : service->applications()) {
        const auto icon = service->iconOfSize_forDisplayIdentifier(29, identifier);
        if (!icon) continue;
        withIcon.insert(identifier);
        EXPECT_EQ(icon->pixelWidth(), icon->pixelHeight()) << identifier;
        EXPECT_LE(icon->pixelWidth(), side) << identifier;
        EXPECT_EQ(icon->size(), (platform::CGSize{29, 29})) << identifier;
        EXPECT_EQ(icon->rgba()[3 + 4 * (icon->rgba().size() / 8)], 255) << identifier << " is opaque in its middle";
    }
    EXPECT_THAT(withIcon, SizeIs(13));
    EXPECT_THAT(withIcon, IsSupersetOf({"com.apple.Maps", "com.a.omega", "se.lindqvist.blabar", "co.sundial.pocket"}));
}

}  // namespace
}  // namespace app_list_test
