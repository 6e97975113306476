// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>

#include "pane.h"

namespace pages_test {
namespace album_artwork_page_test {

namespace {

using kit::atOnce;
using kit::withAnimation;
using testing::ElementsAre;
using testing::IsEmpty;
namespace event = kit::event;
using Labels = std::vector<std::string>;

constexpr auto autoDisplay = "AlbumArtworkAutoDisplay";
constexpr auto delay = "AlbumArtworkAutoDismissDelay";

const Labels delayBlock = {"Auto-Dismiss", "After 1 second", "After 3 seconds", "After 5 seconds", "After 8 seconds"};

TEST(AlbumArtworkPage, hasTheRowsOfItsTable) {
    Pane pane;
    expectRows(pane, kit::albumArtworkTable());
}

TEST(AlbumArtworkPage, showsTheDefaultsWithoutAFile) {
    Pane pane;
    pane.screen.open(albumArtworkPage);
    EXPECT_THAT(pane.log.take(), ElementsAre(event::push("KavixPreferencesAlbumArtworkController")));
    EXPECT_THAT(pane.screen.headers(), ElementsAre("Auto-Display", "Auto-Dismiss"));
    EXPECT_THAT(pane.screen.checkedLabels(), ElementsAre("On Next", "On Previous", "After 1 second"));
}

TEST(AlbumArtworkPage, removesTheDelaysWithTheLastEvent) {
    Pane pane;
    pane.openQuietly(albumArtworkPage);
    pane.screen.tap("On Next");
    EXPECT_THAT(pane.log.take(),
                ElementsAre(settingsWritten(), settingsChanged(), event::reload("Auto-Display", 0, withAnimation),
                            event::reload("On Play", 1, withAnimation), event::reload("On Next", 2, withAnimation),
                            event::reload("On Previous", 3, withAnimation)));
    EXPECT_EQ(pane.stored(autoDisplay), platform::Value(4));
    EXPECT_THAT(pane.screen.checkedLabels(0), ElementsAre("On Previous"));

    pane.screen.tap("On Previous");
    EXPECT_EQ(pane.stored(autoDisplay), platform::Value(0));
    EXPECT_EQ(pane.log.take().back(), event::remove(delayBlock, 4, withAnimation));
    EXPECT_THAT(pane.screen.labels(), ElementsAre("On Play", "On Next", "On Previous"));
    EXPECT_THAT(pane.screen.checkedLabels(), IsEmpty());
}

TEST(AlbumArtworkPage, bringsTheDelaysBackWithTheFirstEvent) {
    Pane pane;
    pane.setFile({{autoDisplay, 0}});
    pane.openQuietly(albumArtworkPage);
    EXPECT_EQ(pane.screen.headers().size(), 1u);
    pane.screen.tap("On Play");
    EXPECT_EQ(pane.stored(autoDisplay), platform::Value(1));
    EXPECT_EQ(pane.log.take().back(), event::insert(delayBlock, 4, withAnimation));
    EXPECT_THAT(pane.screen.headers(), ElementsAre("Auto-Display", "Auto-Dismiss"));
}

TEST(AlbumArtworkPage, hidesTheDelaysAtOnceWhenItAppearsWithoutEvents) {
    Pane pane;
    pane.setFile({{autoDisplay, 0}});
    pane.screen.open(albumArtworkPage);
    EXPECT_EQ(pane.log.take().back(), event::remove(delayBlock, 4, atOnce));
}

TEST(AlbumArtworkPage, keepsTheBitsThatItHasNoRowFor) {
    Pane pane;
    pane.setFile({{autoDisplay, 8}});
    pane.openQuietly(albumArtworkPage);
    EXPECT_THAT(pane.screen.checkedLabels(0), IsEmpty());
    EXPECT_EQ(pane.screen.headers().size(), 2u);
    pane.screen.tap("On Play");
    EXPECT_EQ(pane.stored(autoDisplay), platform::Value(9));
}

TEST(AlbumArtworkPage, takesANegativeValueForAllEventsAndNone) {
    Pane pane;
    pane.setFile({{autoDisplay, -1}});
    pane.openQuietly(albumArtworkPage);
    EXPECT_THAT(pane.screen.checkedLabels(), ElementsAre("On Play", "On Next", "On Previous"));
    EXPECT_EQ(pane.screen.headers().size(), 1u);
    pane.screen.tap("On Play");
    EXPECT_EQ(pane.stored(autoDisplay), platform::Value(-2));
    EXPECT_THAT(pane.screen.checkedLabels(), ElementsAre("On Next", "On Previous"));
    EXPECT_EQ(pane.screen.headers().size(), 1u);
}

TEST(AlbumArtworkPage, doesNothingWhenTheCheckedDelayIsTapped) {
    Pane pane;
    pane.openQuietly(albumArtworkPage);
    pane.screen.tap("After 1 second");
    EXPECT_THAT(pane.log.take(), IsEmpty());
    EXPECT_EQ(pane.file(), std::nullopt);
}

TEST(AlbumArtworkPage, redrawsTheDelaysAfterAChoiceButDoesNotUpdateItself) {
    Pane pane;
    pane.openQuietly(albumArtworkPage);
    pane.setFile({{autoDisplay, 0}});
    pane.screen.tap("After 8 seconds");
    EXPECT_THAT(pane.log.take(),
                ElementsAre(settingsWritten(), settingsChanged(), event::reload("Auto-Dismiss", 4, withAnimation),
                            event::reload("After 1 second", 5, withAnimation),
                            event::reload("After 3 seconds", 6, withAnimation),
                            event::reload("After 5 seconds", 7, withAnimation),
                            event::reload("After 8 seconds", 8, withAnimation)));
    EXPECT_EQ(pane.fileValue(), (platform::Dictionary{{autoDisplay, 0}, {delay, 8}}));
    EXPECT_EQ(pane.screen.headers().size(), 2u);
    pane.screen.appear();
    EXPECT_EQ(pane.screen.headers().size(), 1u);
}

}  // namespace
}  // namespace album_artwork_page_test
}  // namespace pages_test
