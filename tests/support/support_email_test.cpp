// SPDX-License-Identifier: MIT
#include "support/support_email.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/foundation/property_list.h"
#include "tests/kit/pane.h"

namespace trivel3 {
namespace {

using platform::MFMailComposeResult;
using platform::MFMailComposeViewController;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class SupportEmail : public testing::Test {
protected:
    SupportEmail() { platform.openQuietly("KavixPreferencesController"); }

    std::shared_ptr<MFMailComposeViewController> tapSupport() {
        platform.log.take();
        platform.screen.tap("Fenwary Support");
        return std::dynamic_pointer_cast<MFMailComposeViewController>(platform.screen.presented());
    }

    static platform::Dictionary reportOf(const MFMailComposeViewController& composer) {
        const auto reading = platform::readPropertyList(composer.attachments().at(0).data.value());
        EXPECT_EQ(reading.format, platform::PropertyListFormat::binary);
        return *reading.value->dictionary();
    }

    kit::Pane platform;
};

TEST_F(SupportEmail, isPresentedOverTheRootPageWithAnimation) {
    ASSERT_TRUE(tapSupport());
    EXPECT_THAT(platform.log.take(),
                ElementsAre(kit::event::present("MFMailComposeViewController", kit::withAnimation)));
}

TEST_F(SupportEmail, isAddressedToTheSupportDeskAlone) {
    const auto composer = tapSupport();
    EXPECT_EQ(composer->subject(), "Trivel Support");
    EXPECT_THAT(composer->toRecipients(), ElementsAre("support@fenwary.example"));
}

TEST_F(SupportEmail, carriesTheReportAsItsOneAttachment) {
    const auto composer = tapSupport();
    ASSERT_THAT(composer->attachments(), SizeIs(1));
    EXPECT_EQ(composer->attachments()[0].fileName, "Trivel.plist");
    EXPECT_EQ(composer->attachments()[0].mimeType, "application/x-plist");
    EXPECT_THAT(reportOf(*composer), SizeIs(8));
}

TEST_F(SupportEmail, isClosedWithAnimationHoweverItEnded) {
    for (const auto result : {MFMailComposeResult::cancelled, MFMailComposeResult::saved, MFMailComposeResult::sent,
                              MFMailComposeResult::failed}) {
        const auto composer = tapSupport();
        platform.log.take();
        composer->finish(result, result == MFMailComposeResult::failed ? "no connection" : "");
        EXPECT_THAT(platform.log.take(), ElementsAre(kit::event::dismiss(kit::withAnimation)));
        EXPECT_FALSE(platform.screen.presented());
    }
}

TEST_F(SupportEmail, isMadeAfreshOnEachTap) {
    const auto before = tapSupport();
    before->finish(MFMailComposeResult::cancelled);
    platform.screen.moveSwitch("Hot Corners", false);
    const auto after = tapSupport();
    EXPECT_NE(before, after);
    EXPECT_TRUE(reportOf(*before).find("Preferences")->isNull());
    EXPECT_EQ(*reportOf(*after).find("Preferences"), platform::Value(platform::Dictionary{{"HotCorners", false}}));
}

TEST_F(SupportEmail, isPresentedAsNothingWhereNoMailCanBeComposed) {
    platform.mail.canCompose = false;
    EXPECT_FALSE(tapSupport());
    EXPECT_THAT(platform.log.take(), ElementsAre(kit::event::present("nothing", kit::withAnimation)));
}

TEST_F(SupportEmail, changesNothingOnThePhone) {
    tapSupport()->finish(MFMailComposeResult::sent);
    EXPECT_FALSE(platform.phone.bytes(kit::settingsFile));
    EXPECT_THAT(kit::only(kit::Event::Kind::write, platform.log.all()), IsEmpty());
    EXPECT_THAT(kit::only(kit::Event::Kind::notification, platform.log.all()), IsEmpty());
}

/// Notes the order in which the page and the platform meet.
class OrderedPlatform : public kit::TestPlatform {
public:
    struct Query final : platform::DeviceQuery {
        explicit Query(std::vector<std::string>& order) : _order(order) {}
        std::optional<platform::Value> copyAnswer(std::string_view key) override {
            _order.emplace_back(key);
            return std::nullopt;
        }
        std::vector<std::string>& _order;
    };

    struct Mail final : platform::MailService {
        explicit Mail(std::vector<std::string>& order) : _order(order) {}
        std::shared_ptr<MFMailComposeViewController> makeMailComposeViewController(
            platform::Platform& platform) override {
            _order.emplace_back("composer");
            return std::make_shared<MFMailComposeViewController>(platform);
        }
        std::vector<std::string>& _order;
    };

    OrderedPlatform() {
        phone.onRead = [this](std::string_view path) { order.emplace_back(path); };
    }

    std::vector<std::string> order;
    Query query{order};
    Mail composers{order};
    platform::Platform ordered{phone, notifications, classes, system, application, query, composers, posts, {}, {}};
};

TEST(SupportEmailOrder, asksForTheComposerFirstAndThenForEachPartInItsOrder) {
    OrderedPlatform platform;
    ASSERT_TRUE(makeSupportEmail(platform.ordered, nullptr));
    EXPECT_THAT(platform.order,
                ElementsAre("composer", "UniqueDeviceID", "ProductVersion", "ProductType", "DiskUsage", "DeviceColor",
                            "CPUArchitecture", "/var/lib/dpkg/status", std::string(kit::settingsFile)));
}

}  // namespace
}  // namespace trivel3
