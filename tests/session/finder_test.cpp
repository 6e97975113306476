// SPDX-License-Identifier: MIT
#include "hosts/session/finder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <set>

#include "hosts/session/services.h"
#include "hosts/session/settings_session.h"
#include "hosts/session/title_path.h"
#include "tests/kit/page_tables.h"
#include "tests/kit/phone.h"
#include "tests/kit/test_platform.h"

namespace finder_test {
namespace {

using hosts::FindHit;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::SizeIs;

using Titles = std::vector<std::string>;
const Titles optionsTitles{"Advanced Options"};
const Titles slidersTitles{"Advanced Options", "Slider Actions"};

/// The real pane on a phone of its own, with a page of it open, and a finder beside it.
class Finding : public testing::Test {
protected:
    void SetUp() override {
        std::filesystem::copy(TRIVEL3_SAMPLE_PHONE, phone.folder, std::filesystem::copy_options::recursive);
        start("phone-4");
    }

    void start(const char* device) {
        hosts::PhoneOptions options;
        options.phone = phone.folder;
        options.device = hosts::findDeviceShape(device);
        finder.reset();
        session.reset();
        auto opening = hosts::OpenedPhone::open(options, "test");
        ASSERT_TRUE(opening) << opening.error().text();
        opened.emplace(*std::move(opening));
        opened->installation.systemImage = kit::stagedSystemImage();
        services.emplace(*opened);
        auto loaded =
            hosts::SettingsSession::load(services->forSession(), opened->installation.systemImage, opened->shape);
        ASSERT_TRUE(loaded) << loaded.error().text();
        session = *std::move(loaded);
        finder.emplace(*opened);
        navigation.emplace(screen);
        navigation->pushViewController_animated(*session->makeRootPage(), false);
        titles.clear();
    }

    void openPage(const Titles& path) {
        for (const std::string& title : path) {
            ASSERT_TRUE(hosts::openPage(*navigation, title));
            titles.push_back(title);
        }
    }

    std::vector<FindHit> find(std::string_view text, std::size_t most = 30) {
        return finder->find(text, most, {*navigation->topViewController(), titles});
    }
    std::vector<std::string> texts(std::string_view text) {
        std::vector<std::string> said;
        for (const FindHit& hit : find(text))
            said.push_back(hit.text);
        return said;
    }

    kit::Phone phone;
    std::optional<hosts::OpenedPhone> opened;
    std::optional<hosts::QuietServices> services;
    std::unique_ptr<hosts::SettingsSession> session;
    std::optional<hosts::Finder> finder;
    hosts::QuietScreen screen;
    std::optional<platform::UINavigationController> navigation;
    Titles titles;
};

TEST_F(Finding, tellsWhereEachHitIs) {
    const auto hits = find("set volume");
    ASSERT_THAT(hits, SizeIs(2));
    EXPECT_EQ(hits[0].text, "Set Volume to Minimum");
    EXPECT_EQ(hits[0].titles, slidersTitles);
    EXPECT_EQ(hits[0].place, "Trivel 3 › Advanced Options › Slider Actions › Tap Volume Icon to:");
    EXPECT_EQ(hits[0].path, (platform::NSIndexPath{1, 1}));
    EXPECT_EQ(hits[1].text, "Set Volume to Maximum");
}

TEST_F(Finding, tellsHitsOfOneLabelApart) {
    std::set<std::string> places;
    const auto hits = find("do not display");
    ASSERT_GE(hits.size(), 2u);
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(hits[i].text, "Do Not Display");
        places.insert(hits[i].place);
    }
    EXPECT_THAT(places, ElementsAre("Trivel 3 › Advanced Options › Quick Launcher › When Media is Playing",
                                    "Trivel 3 › Advanced Options › Quick Launcher › When No Media is Playing"));
}

TEST_F(Finding, findsHeadersFootersAndPagesThatAreNoLists) {
    EXPECT_THAT(find("tap volume"), Contains(AllOf(Field(&FindHit::text, "Tap Volume Icon to:"),
                                                   Field(&FindHit::label, "Switch to Ringer Volume"))));
    const auto footers = find("background audio");
    ASSERT_FALSE(footers.empty());
    EXPECT_EQ(footers.front().text, "Do not close app playing background audio.");
    EXPECT_EQ(footers.front().label, "Exclude Currently Playing");
    EXPECT_EQ(footers.front().titles, (Titles{"Advanced Options", "Close All Apps"}));
    EXPECT_THAT(find("daxon"), Contains(Field(&FindHit::titles, Titles{"The Creators"})));
}

TEST_F(Finding, takesWordsInAnyOrderAndCaseAndFromWhereTheRowStands) {
    EXPECT_EQ(texts("CORNERS hot").front(), "Hot Corners");
    EXPECT_EQ(texts("volume slider minimum").front(), "Set Volume to Minimum");
    EXPECT_THAT(texts("rrow"), IsEmpty()) << "the place counts by the beginnings of its words";
    EXPECT_THAT(texts("itch"), Contains("Quick Switcher"));
    EXPECT_THAT(texts(""), IsEmpty());
    EXPECT_THAT(texts(" - "), IsEmpty());
    EXPECT_THAT(texts("no such thing anywhere"), IsEmpty());
}

TEST_F(Finding, givesNoMoreThanIsAskedFor) {
    EXPECT_THAT(find("a"), SizeIs(30));
    EXPECT_THAT(find("a", 3), SizeIs(3));
}

TEST_F(Finding, prefersThePageThatIsOpenAmongEquals) {
    kit::writeSettings(phone, kit::settingsOf({{"QuickLauncherIsPlaying", "<integer>2</integer>"}}));
    EXPECT_EQ(find("after 3").front().titles.back(), "Quick Launcher") << "the first in the pages' order";
    openPage({"Advanced Options", "Album Artwork"});
    EXPECT_EQ(find("after 3").front().titles.back(), "Album Artwork");
}

TEST_F(Finding, findsTheApplicationsOfThePageThatIsOpenAlone) {
    EXPECT_THAT(texts("camera"), IsEmpty());
    openPage({"Advanced Options", "Close All Apps"});
    const auto hits = find("camera");
    ASSERT_THAT(hits, SizeIs(1));
    EXPECT_EQ(hits.front().titles, titles);
    EXPECT_EQ(hits.front().label, "Camera");
    EXPECT_EQ(hosts::rowOf(*navigation->topViewController(), hits.front()), hits.front().path);
}

TEST_F(Finding, repairsAndWritesNothing) {
    // Each contradicts another setting, and the options page repairs it as it appears.
    kit::writeSettings(
        phone,
        kit::settingsOf({{"AccessAppSwitcher", "<true/>"}, {"PeopleInToday", "<true/>"}, {"MultiCenter", "<false/>"}}));
    const std::string before = kit::readSettings(phone);
    EXPECT_FALSE(find("switcher").empty());
    EXPECT_EQ(kit::readSettings(phone), before);
    EXPECT_FALSE(std::filesystem::exists(phone.around / "state/trivel3/history"));
    EXPECT_FALSE(opened->outcomes->takeSaved()) << "nobody is told of what stays in memory";
}

TEST_F(Finding, looksAnewOnceItIsTold) {
    EXPECT_THAT(texts("OpenToLastAppWithQS"), IsEmpty());
    kit::writeSettings(phone, kit::settingsOf({{"OpenToLastApp", "<true/>"}}));
    EXPECT_THAT(texts("OpenToLastAppWithQS"), IsEmpty()) << "the pages are looked at once";
    finder->forget();
    EXPECT_THAT(texts("OpenToLastAppWithQS"), ElementsAre("Apply to Quick Switcher"));
}

TEST_F(Finding, leadsFromAnyPageToAnyHit) {
    openPage({"Advanced Options", "Album Artwork"});
    for (const char* text : {"SliderActionsVolume", "HotCorners", "ReachabilityMode", "QuickLauncherIsPlaying"}) {
        const FindHit hit = find(text).front();
        const auto gone = hosts::goToPage(*navigation, titles, hit);
        ASSERT_TRUE(gone) << gone.error().text();
        titles = hit.titles;
        auto& page = *navigation->topViewController();
        EXPECT_EQ(page.title(), titles.empty() ? "Trivel 3" : titles.back());
        EXPECT_EQ(hosts::rowOf(page, hit), hit.path) << text;
    }
    FindHit lost;
    lost.titles = {"Advanced Options", "Gone"};
    EXPECT_EQ(hosts::goToPage(*navigation, titles, lost).error().reason, "'Advanced Options' leads to no page 'Gone'");
}

// -- Every row that holds a key --------------------------------------------------------------------

struct Keyed {
    Titles titles;
    std::size_t section;
    kit::ExpectedRow row;
};

std::string firstTwoWords(const std::string& label) {
    const auto first = label.find(' ');
    return first == label.npos ? label : label.substr(0, label.find(' ', first + 1));
}

void addKeyed(std::vector<Keyed>& keyed, const kit::PageTable& table, const Titles& titles,
              const kit::PageState& state) {
    std::size_t sections = 0;
    for (const std::size_t position : kit::expectedPositions(table, state)) {
        const kit::ExpectedRow& row = table.rows[position];
        if (row.kind == kit::ExpectedRow::Kind::group) ++sections;
        if (row.kind == kit::ExpectedRow::Kind::switchRow || row.kind == kit::ExpectedRow::Kind::choice)
            keyed.push_back({titles, sections - 1, row});
    }
}

std::vector<Keyed> keyedRows(const kit::PageState& state) {
    std::vector<Keyed> keyed;
    addKeyed(keyed, kit::rootTable(), {}, state);
    addKeyed(keyed, kit::optionsTable(), optionsTitles, state);
    for (const std::size_t position : kit::expectedPositions(kit::optionsTable(), state)) {
        const kit::ExpectedRow& link = kit::optionsTable().rows[position];
        if (link.kind != kit::ExpectedRow::Kind::link) continue;
        if (const kit::PageTable* table = kit::pageTable(link.key))
            addKeyed(keyed, *table, {"Advanced Options", link.label}, state);
    }
    std::size_t section = 0;
    for (const auto& [label, key] : {std::pair{"Auto-Close All Apps", "CloseAllAppsNoConfirmation"},
                                     {"Go Home upon Close All", "CloseAllAppsBackToHomeScreen"},
                                     {"Exclude Currently Playing", "CloseAllAppsExcludeNowPlaying"}}) {
        keyed.push_back({{"Advanced Options", "Close All Apps"},
                         section++,
                         {.kind = kit::ExpectedRow::Kind::switchRow, .label = label, .key = key}});
    }
    return keyed;
}

/// A settings file in which any setting has any of its values, the same for one seed.
std::vector<std::pair<std::string, std::string>> anySettings(unsigned seed) {
    std::mt19937 random(seed);
    std::vector<std::pair<std::string, std::string>> entries;
    for (const kit::ExpectedSetting& setting : kit::expectedSettings()) {
        if (random() % 3 == 0 || setting.defaultValue.dictionary()) continue;
        const bool isSwitch = setting.defaultValue.boolean() != nullptr;
        entries.emplace_back(setting.key, isSwitch ? (random() % 2 ? "<true/>" : "<false/>")
                                                   : "<integer>" + std::to_string(random() % 8) + "</integer>");
    }
    return entries;
}

class EveryKey : public Finding, public testing::WithParamInterface<unsigned> {
protected:
    kit::PageState state(bool isPhone, bool isTall) {
        const auto access = session->preferenceAccess();
        return kit::pageState(isPhone, isTall, [&](std::string_view key) { return (*access)->preferenceForKey(key); });
    }
    static auto isAt(const Keyed& keyed) {
        return [&keyed](const FindHit& hit) {
            return hit.titles == keyed.titles && hit.path.section == keyed.section &&
                   (keyed.row.kind == kit::ExpectedRow::Kind::choice || hit.label == keyed.row.label);
        };
    }
};

TEST_P(EveryKey, isFoundByItsLabelAndFirstByItsName) {
    const struct {
        const char* name;
        bool isPhone, isTall;
    } devices[] = {{"phone-4", true, true}, {"phone-3.5", true, false}, {"tablet", false, false}};
    const auto& device = devices[GetParam() % std::size(devices)];
    kit::writeSettings(phone, kit::settingsOf(anySettings(GetParam())));
    start(device.name);
    for (const Keyed& keyed : keyedRows(state(device.isPhone, device.isTall))) {
        const auto byName = find(keyed.row.key, 1);
        ASSERT_THAT(byName, SizeIs(1)) << keyed.row.key;
        EXPECT_PRED1(isAt(keyed), byName.front()) << keyed.row.key << " led to " << byName.front().text;
        const auto byLabel = find(firstTwoWords(keyed.row.label), 5);
        EXPECT_TRUE(std::ranges::any_of(byLabel, isAt(keyed))) << keyed.row.label << " of " << keyed.row.key;
    }
}

INSTANTIATE_TEST_SUITE_P(OfAnySettings, EveryKey, testing::Range(0u, 12u));

}  // namespace
}  // namespace finder_test
