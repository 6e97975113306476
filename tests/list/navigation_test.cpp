// SPDX-License-Identifier: MIT
#include "platform/ui/navigation_controller.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/services/mail_composer.h"
#include "platform/services/post_composer.h"
#include "rows.h"

namespace list_test {
namespace {

using kit::atOnce;
using kit::withAnimation;
using testing::ElementsAre;
using testing::IsEmpty;
namespace event = kit::event;

/// Says in the log when it is loaded and when it appears.
class TalkingPage : public platform::PSListController {
public:
    TalkingPage(platform::Platform& platform, kit::EventLog& log) : PSListController(platform), _log(log) {}
    const char* className() const override { return "TalkingPage"; }
    void viewWillAppear(bool animated) override {
        PSListController::viewWillAppear(animated);
        _log.add(event::notification(animated ? "appears with animation" : "appears"));
    }

protected:
    void viewDidLoad() override {
        PSListController::viewDidLoad();
        _log.add(event::notification("loaded"));
    }

private:
    kit::EventLog& _log;
};

class Navigation : public testing::Test {
protected:
    Navigation() {
        host.classes.add({"TalkingPage", [this](platform::Platform& owner) {
                              return std::make_shared<TalkingPage>(owner, host.log);
                          }});
    }

    kit::TestPlatform host;
};

TEST_F(Navigation, loadsAPageThenShowsItThenLetsItAppear) {
    host.screen.open("TalkingPage");
    EXPECT_THAT(host.log.take(), ElementsAre(event::notification("loaded"), event::push("TalkingPage"),
                                             event::notification("appears with animation")));
}

TEST_F(Navigation, letsThePageBelowAppearAgainWithoutLoadingIt) {
    host.screen.open("TalkingPage");
    host.screen.open("TalkingPage");
    host.log.take();
    EXPECT_TRUE(host.screen.back());
    EXPECT_THAT(host.log.take(), ElementsAre(event::pop("TalkingPage"), event::notification("appears with animation")));
}

TEST_F(Navigation, keepsItsLastPage) {
    host.screen.open("TalkingPage");
    host.log.take();
    EXPECT_FALSE(host.screen.back());
    EXPECT_THAT(host.log.take(), IsEmpty());
    EXPECT_TRUE(host.screen.top());
}

TEST_F(Navigation, tellsAPageWhoseStackItIsOn) {
    auto& first = host.screen.open("TalkingPage");
    EXPECT_TRUE(first.navigationController());
    host.screen.open("TalkingPage");
    auto second = host.screen.top();
    EXPECT_EQ(second->navigationController(), first.navigationController());
    host.screen.back();
    EXPECT_FALSE(second->navigationController());
}

TEST_F(Navigation, tellsPagesThatOutliveTheStackThatItIsGone) {
    std::shared_ptr<platform::UIViewController> page;
    {
        kit::TestPlatform other;
        platform::UINavigationController stack(other.screen);
        page = std::make_shared<TalkingPage>(host.services(), host.log);
        stack.pushViewController_animated(page, false);
        EXPECT_EQ(page->navigationController(), &stack);
    }
    EXPECT_FALSE(page->navigationController());
}

TEST_F(Navigation, presentsAndDismissesWithTheCompletions) {
    auto& page = host.screen.open("TalkingPage");
    host.log.take();
    auto over = std::make_shared<platform::UIViewController>(host.services().screen);
    int completed = 0;
    page.presentViewController_animated_completion(over, true, [&completed] { ++completed; });
    EXPECT_EQ(host.screen.presented(), over);
    EXPECT_EQ(over->presentingViewController().get(), &page);
    page.dismissViewControllerAnimated_completion(false, [&completed] { ++completed; });
    EXPECT_EQ(host.screen.presented(), nullptr);
    EXPECT_EQ(completed, 2);
    EXPECT_THAT(host.log.take(),
                ElementsAre(event::present("UIViewController", withAnimation), event::dismiss(atOnce)));
}

TEST_F(Navigation, passesOnThatThereIsNothingToPresent) {
    auto& page = host.screen.open("TalkingPage");
    host.log.take();
    page.presentViewController_animated_completion(nullptr, true, nullptr);
    EXPECT_THAT(host.log.take(), ElementsAre(event::present("nothing", withAnimation)));
}

TEST_F(Navigation, dismissesNothingWhenNothingIsPresented) {
    auto& page = host.screen.open("TalkingPage");
    host.log.take();
    page.dismissViewControllerAnimated_completion(true, nullptr);
    EXPECT_THAT(host.log.take(), IsEmpty());
}

TEST_F(Navigation, takesWhatAPagePresentedAlongWithThePage) {
    auto& below = host.screen.open("TalkingPage");
    auto kept = std::make_shared<platform::UIViewController>(host.services().screen);
    below.presentViewController_animated_completion(kept, true, nullptr);
    auto& page = host.screen.open("TalkingPage");
    auto first = std::make_shared<platform::UIViewController>(host.services().screen);
    auto second = std::make_shared<platform::UIViewController>(host.services().screen);
    page.presentViewController_animated_completion(first, true, nullptr);
    page.presentViewController_animated_completion(second, true, nullptr);
    host.log.take();
    EXPECT_TRUE(host.screen.back());
    EXPECT_EQ(only(kit::Event::Kind::dismiss, host.log.take()).size(), 2u);
    EXPECT_EQ(host.screen.presented(), kept);
    EXPECT_EQ(kept->presentingViewController().get(), &below);
    EXPECT_EQ(first->presentingViewController(), nullptr);
    EXPECT_EQ(second->presentingViewController(), nullptr);
}

TEST_F(Navigation, forgetsAPageThatGoesFromUnderAnothersComposer) {
    host.screen.open("TalkingPage");
    auto& page = host.screen.open("TalkingPage");
    auto post = host.posts.composeViewControllerForServiceType(host.services(), platform::SLServiceTypeTwitter);
    page.presentViewController_animated_completion(post, true, nullptr);
    page.presentViewController_animated_completion(nullptr, true, nullptr);
    EXPECT_TRUE(host.screen.back());
    EXPECT_EQ(post->presentingViewController(), nullptr);
    host.log.take();
    post->finish(platform::SLComposeViewControllerResult::done);
    EXPECT_THAT(host.log.take(), IsEmpty());
}

struct Delegate : platform::MFMailComposeViewControllerDelegate {
    void mailComposeController_didFinishWithResult_error(platform::MFMailComposeViewController&,
                                                         platform::MFMailComposeResult result,
                                                         const std::string& error) override {
        results.emplace_back(result, error);
    }
    std::vector<std::pair<platform::MFMailComposeResult, std::string>> results;
};

TEST_F(Navigation, tellsTheMailComposersDelegateHowItEnded) {
    platform::MFMailComposeViewController composer(host.services());
    composer.finish(platform::MFMailComposeResult::sent);
    auto delegate = std::make_shared<Delegate>();
    composer.setMailComposeDelegate(delegate);
    composer.finish(platform::MFMailComposeResult::failed, "no way out");
    EXPECT_THAT(delegate->results, ElementsAre(std::pair(platform::MFMailComposeResult::failed, "no way out")));
    delegate.reset();
    composer.finish(platform::MFMailComposeResult::sent);
}

TEST_F(Navigation, letsAPostComposerDismissItself) {
    auto& page = host.screen.open("TalkingPage");
    auto post = host.posts.composeViewControllerForServiceType(host.services(), platform::SLServiceTypeTwitter);
    page.presentViewController_animated_completion(post, true, nullptr);
    host.log.take();
    post->finish(platform::SLComposeViewControllerResult::done);
    EXPECT_THAT(host.log.take(), ElementsAre(event::dismiss(withAnimation)));
}

}  // namespace
}  // namespace list_test
