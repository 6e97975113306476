// SPDX-License-Identifier: MIT
#include <cstdio>
#include <cstdlib>
#include <random>

#include "far_phone.h"
#include "hosts/phones/far/ssh_phone.h"
#include "platform/foundation/property_list.h"
#include "platform/services/dictionary_files.h"
#include "tests/kit/distance.h"
#include "tests/kit/noted_outcomes.h"

namespace far_phones_test {
namespace {

using std::chrono::microseconds;

/// The phone itself, through a way that breaks.
struct BrokenConnection : testing::Test {
    std::unique_ptr<hosts::Phone> open() {
        const auto address = hosts::parseSshAddress(host.address(way.port()));
        hosts::SshOptions options;
        options.command = host.ssh();
        auto opened = hosts::SshPhone::open(*address, options, "/none");
        EXPECT_TRUE(opened) << (opened ? "" : opened.error().text());
        if (!opened) throw std::runtime_error{opened.error().text()};
        (*opened)->tell(&outcomes, false);
        return std::move(*opened);
    }

    static std::int64_t numberIn(const platform::Value* value) {
        return value && value->integer() ? static_cast<std::int64_t>(value->integer()->bits) : 0;
    }

    // Adds one to the number under the key. Whether that came about.
    static bool countUp(hosts::Phone& phone, const std::string& key) {
        const auto one = [key](std::optional<std::string_view> held) -> platform::Result<platform::NewContent> {
            const auto reading = platform::readPropertyList(held.value_or(""));
            platform::Dictionary content =
                reading && reading.value->dictionary() ? *reading.value->dictionary() : platform::Dictionary();
            const auto* const before = content.find(key);
            content.set(key, platform::Value(numberIn(before) + 1));
            return platform::NewContent{*platform::writeXmlPropertyList(platform::Value(content)).bytes};
        };
        return static_cast<bool>(phone.files().changeFile(settingsPath, one));
    }

    std::int64_t counted(const std::string& key) const {
        const auto reading = platform::readPropertyList(readSettings(host.phone()));
        EXPECT_TRUE(reading) << "the file is not whole";
        const auto* const value = reading ? reading.value->dictionary()->find(key) : nullptr;
        return numberIn(value);
    }

    SshHost host;
    Distance way{host.port(), microseconds{200}};
    NotedOutcomes outcomes;
};

TEST_F(BrokenConnection, makesEachChangeOnceWhereverItIsCut) {
    writeSettings(host.phone(), settingsOf({}));
    const auto phone = open();
    std::mt19937 random(7);
    // script/reliability asks for many.
    const char* const asked = std::getenv("TRIVEL3_CHANGES");
    const int changes = asked ? std::atoi(asked) : 120;
    const int betweenCuts = std::max(changes / 100, 2);
    for (int made = 0; made < changes; ++made) {
        // An exchange has some thousands of bytes, connecting anew among them.
        if (made % betweenCuts == 0) way.cutAfter(1 + random() % 2500);
        ASSERT_TRUE(countUp(*phone, "Count")) << made;
        way.cutAfter(0);
        ASSERT_EQ(counted("Count"), made + 1) << "after " << way.connections() << " connections";
    }
    EXPECT_GT(way.connections(), changes / betweenCuts / 4);
    std::printf("%d changes, each made once, over %d connections\n", changes, way.connections());
    EXPECT_EQ(temporariesIn(host.phone().folder), 0U);
}

TEST_F(BrokenConnection, isSaidToBeSoWhereThePhoneDoesNotComeBack) {
    writeSettings(host.phone(), settingsOf({{"Count", "<integer>1</integer>"}}));
    const auto phone = open();
    const std::string before = readSettings(host.phone());
    writeText(host.inside("authorized_keys"), "");
    way.cut();
    EXPECT_FALSE(countUp(*phone, "Count"));
    EXPECT_EQ(readSettings(host.phone()), before);
}

TEST_F(BrokenConnection, readsOnAfterItHasComeBack) {
    writeSettings(host.phone(), settingsOf({{"Count", "<integer>1</integer>"}}));
    const auto phone = open();
    for (int cuts = 0; cuts < 3; ++cuts) {
        way.cut();
        std::string contents;
        EXPECT_TRUE(phone->files().readFile(settingsPath, contents));
        EXPECT_EQ(contents, readSettings(host.phone()));
    }
}

}  // namespace
}  // namespace far_phones_test
