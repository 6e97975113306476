// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "pane.h"

namespace pages_test {
namespace quick_launcher_page_test {

namespace {

using kit::atOnce;
using kit::withAnimation;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
namespace event = kit::event;
using Labels = std::vector<std::string>;

constexpr auto notPlaying = "QuickLauncherNotPlaying";
constexpr auto isPlaying = "QuickLauncherIsPlaying";
constexpr auto delay = "QuickLauncherAutoDismissDelay";

const Labels delayBlock = {"Auto-Dismiss", "After 1 second", "After 3 seconds", "After 5 seconds", "After 8 seconds"};

// Two groups share their labels, so rows are named by place.
constexpr kit::NSIndexPath autoDismissIdle{0, 2};
constexpr kit::NSIndexPath displayIdle{0, 0};
constexpr kit::NSIndexPath autoDismissPlaying{1, 0};
constexpr kit::NSIndexPath doNotDisplayPlaying{1, 1};

TEST(QuickLauncherPage, hasTheRowsOfItsTable) {
    Pane pane;
    expectRows(pane, kit::quickLauncherTable());
}

TEST(QuickLauncherPage, hidesTheDelaysAtOnceWhenItFirstAppears) {
    Pane pane;
    pane.screen.open(quickLauncherPage);
    EXPECT_THAT(pane.log.take(), ElementsAre(event::push("KavixPreferencesQuickLauncherController"),
                                             event::remove(delayBlock, 8, atOnce)));
    EXPECT_THAT(pane.screen.headers(), ElementsAre("When No Media is Playing", "When Media is Playing"));
    EXPECT_THAT(pane.screen.footers(), ElementsAre(std::nullopt, std::nullopt));
    EXPECT_THAT(pane.screen.checkedLabels(), ElementsAre("Do Not Display", "Do Not Display"));
    EXPECT_EQ(pane.file(), std::nullopt);
}

TEST(QuickLauncherPage, insertsTheDelaysAfterTheLastRowWhenEitherGroupIsDismissed) {
    for (const kit::NSIndexPath path : {autoDismissIdle, autoDismissPlaying}) {
        Pane pane;
        pane.openQuietly(quickLauncherPage);
        pane.screen.tap(path);
        const auto events = pane.log.take();
        EXPECT_EQ(events.back(), event::insert(delayBlock, 8, withAnimation));
        EXPECT_THAT(events, Contains(settingsChanged()).Times(1));
        EXPECT_THAT(pane.screen.labels(2),
                    ElementsAre("After 1 second", "After 3 seconds", "After 5 seconds", "After 8 seconds"));
        EXPECT_THAT(pane.screen.checkedLabels(2), ElementsAre("After 3 seconds"));
    }
}

TEST(QuickLauncherPage, keepsTheDelaysUntilNeitherGroupIsDismissed) {
    Pane pane;
    pane.setFile({{notPlaying, 2}, {isPlaying, 2}});
    pane.openQuietly(quickLauncherPage);
    pane.screen.tap(displayIdle);
    EXPECT_THAT(only(kit::Event::Kind::remove, pane.log.take()), IsEmpty());
    EXPECT_EQ(pane.screen.headers().size(), 3u);
    pane.screen.tap(doNotDisplayPlaying);
    EXPECT_EQ(pane.log.take().back(), event::remove(delayBlock, 8, withAnimation));
    EXPECT_EQ(pane.screen.headers().size(), 2u);
    EXPECT_EQ(pane.fileValue(), (platform::Dictionary{{notPlaying, 1}, {isPlaying, 0}}));
}

TEST(QuickLauncherPage, showsTheDelaysOnceWhenBothGroupsAreDismissed) {
    Pane pane;
    pane.setFile({{notPlaying, 2}});
    pane.openQuietly(quickLauncherPage);
    pane.screen.tap(autoDismissPlaying);
    EXPECT_THAT(only(kit::Event::Kind::insert, pane.log.take()), IsEmpty());
    EXPECT_EQ(pane.screen.labels().size(), 10u);
}

TEST(QuickLauncherPage, redrawsTheTappedGroupAndItsHeading) {
    Pane pane;
    pane.openQuietly(quickLauncherPage);
    pane.screen.tap(displayIdle);
    EXPECT_THAT(
        pane.log.take(),
        ElementsAre(settingsWritten(), settingsChanged(), event::reload("When No Media is Playing", 0, withAnimation),
                    event::reload("Display", 1, withAnimation), event::reload("Do Not Display", 2, withAnimation),
                    event::reload("Auto-Dismiss", 3, withAnimation)));
}

TEST(QuickLauncherPage, takesNoOtherValueForDismissing) {
    for (const int value : {-2, 1, 3, 6, 258}) {
        Pane pane;
        pane.setFile({{notPlaying, value}, {isPlaying, value}});
        pane.openQuietly(quickLauncherPage);
        EXPECT_EQ(pane.screen.headers().size(), 2u) << value;
    }
}

TEST(QuickLauncherPage, checksNoDelayForOneWithoutARow) {
    Pane pane;
    pane.setFile({{notPlaying, 2}, {delay, 2}});
    pane.openQuietly(quickLauncherPage);
    EXPECT_THAT(pane.screen.checkedLabels(2), IsEmpty());
    pane.screen.tap("After 1 second");
    EXPECT_EQ(pane.stored(delay), platform::Value(1));
    EXPECT_THAT(pane.screen.checkedLabels(2), ElementsAre("After 1 second"));
}

TEST(QuickLauncherPage, doesNothingWhenACheckedRowIsTapped) {
    Pane pane;
    pane.setFile({{notPlaying, 2}});
    pane.openQuietly(quickLauncherPage);
    pane.screen.tap(autoDismissIdle);
    pane.screen.tap("After 3 seconds");
    EXPECT_THAT(pane.log.take(), IsEmpty());
}

TEST(QuickLauncherPage, updatesItselfEvenAfterAChangeOfTheDelay) {
    Pane pane;
    pane.setFile({{notPlaying, 2}});
    pane.openQuietly(quickLauncherPage);
    pane.setInFile(notPlaying, 0);
    pane.screen.tap("After 5 seconds");
    EXPECT_EQ(pane.log.take().back(), event::remove(delayBlock, 8, withAnimation));
}

TEST(QuickLauncherPage, followsAChangeMadeElsewhereWhenItAppearsAgain) {
    Pane pane;
    pane.openQuietly(quickLauncherPage);
    pane.setFile({{isPlaying, 2}});
    pane.screen.appear();
    EXPECT_THAT(pane.log.take(), ElementsAre(event::insert(delayBlock, 8, atOnce)));
}

TEST(QuickLauncherPage, bringsTheDelaysBackOnReloadAndHidesThemAnew) {
    Pane pane;
    pane.openQuietly(quickLauncherPage).reloadSpecifiers();
    EXPECT_THAT(pane.log.take(), ElementsAre(event::reloadTable("KavixPreferencesQuickLauncherController"),
                                             event::remove(delayBlock, 8, atOnce)));
}

}  // namespace
}  // namespace quick_launcher_page_test
}  // namespace pages_test
