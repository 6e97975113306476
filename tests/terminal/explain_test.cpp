// SPDX-License-Identifier: MIT
// What explain tells of settings, beside what the pages do with them.
#include <random>
#include <set>

#include "drive.h"
#include "tests/kit/expectations.h"

namespace terminal_test {

using namespace kit;

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

struct Explain : testing::Test {
    Explain() { ctl.usePhone(phone.folder); }

    json explained(const Trivel3ctl::Arguments& more = {}) const {
        Trivel3ctl::Arguments words{"explain", "--json"};
        words.insert(words.end(), more.begin(), more.end());
        return ctl.runForJson(words);
    }

    Trivel3ctl ctl;
    Phone phone;
};

TEST_F(Explain, tellsOfASettingWhatItsPageSays) {
    const Outcome outcome = ctl.run({"explain", "QuickLauncherAutoDismissDelay", "HotCorners"});
    expectDone(outcome);
    EXPECT_EQ(outcome.output,
              "QuickLauncherAutoDismissDelay\n"
              "  Page: Advanced Options/Quick Launcher\n"
              "  Group: Auto-Dismiss\n"
              "  Kind: integer\n"
              "  Default: 3\n"
              "  Value: 3 (default)\n"
              "  Values:\n"
              "      1: After 1 second\n"
              "    ✓ 3: After 3 seconds\n"
              "      5: After 5 seconds\n"
              "      8: After 8 seconds\n"
              "  Depends on: MultiCenter = true (Multi-Center)\n"
              "  Depends on: ReachabilityMode = false (Reachable Display) or\n"
              "    MinimalControlCenterEnabled = false (Minimal Display)\n"
              "  Depends on: QuickLauncherNotPlaying = 2 (Auto-Dismiss) or\n"
              "    QuickLauncherIsPlaying = 2 (Auto-Dismiss)\n"
              "\n"
              "HotCorners\n"
              "  Page: Trivel 3\n"
              "  Row: Hot Corners\n"
              "  Kind: boolean\n"
              "  Default: true\n"
              "  Value: true (default)\n"
              "  Values:\n"
              "    ✓ true\n"
              "      false\n"
              "  Footer: Return to the Home Screen by swiping up from the bottom right corner\n"
              "    of the screen.\n"
              "  Depended on by: OpenToLastApp, InvertHotCorners, OpenToLastAppWithQS\n");
}

TEST_F(Explain, ticksWhatHoldsTogether) {
    writeSettings(phone, settingsOf({{"MinimalControlCenterCondition", "<integer>5</integer>"}}));
    EXPECT_THAT(ctl.run({"explain", "MinimalControlCenterCondition"}).output,
                HasSubstr("  Value: 5 (stored)\n"
                          "  Values, which can hold together:\n"
                          "      0: Always\n"
                          "    ✓ 1: If no Media is Playing\n"
                          "      2: If AirPlay is undetected\n"
                          "        Depends on: ReachabilityMode = false (Reachable Display)\n"
                          "    ✓ 4: If AirDrop is Off\n"
                          "        Depends on: ReachabilityMode = false (Reachable Display)\n"));
    writeSettings(phone, settingsOf({{"MinimalControlCenterCondition", "<integer>0</integer>"}}));
    EXPECT_THAT(ctl.run({"explain", "MinimalControlCenterCondition"}).output, HasSubstr("    ✓ 0: Always\n"));
}

TEST_F(Explain, tellsTheFooterThatThePageHasNow) {
    EXPECT_THAT(explained({"MinimalControlCenterEnabled"})[0]["footer"], StartsWith("Slide up on playback area"));
    writeSettings(phone, settingsOf({{"ReachabilityMode", "<false/>"}}));
    EXPECT_EQ(explained({"MinimalControlCenterEnabled"})[0]["footer"], "Hides AirDrop/AirPlay and Track-Seeker.");
}

TEST_F(Explain, tellsOfEverySettingInTheOrderOfList) {
    writeSettings(phone, settingsOf({{"HotCorners", "<false/>"}, {"Mine", "<string>x</string>"}}));
    const json list = ctl.runForJson({"list", "--json"});
    json told = explained();
    ASSERT_EQ(told.size(), list.size());
    for (std::size_t i = 0; i < list.size(); ++i)
        for (const auto& [name, value] : list[i].items())
            EXPECT_EQ(told[i][name], value) << list[i]["key"] << " " << name;
}

TEST_F(Explain, pageOfAnApplicationListBelongsToTheSettingThatItTicks) {
    const json told = explained({"CloseAllAppsExceptions"})[0];
    EXPECT_EQ(told["page"], "Advanced Options/Close All Apps");
    EXPECT_EQ(told["group"], "Exclude From Close All");
    EXPECT_EQ(told["dependsOn"].dump(), R"([[{"key":"MultiCenter","row":"Multi-Center","value":true}]])");
}

TEST_F(Explain, settingWithoutARowOnTheDeviceIsSaidToBeThat) {
    EXPECT_THAT(ctl.run({"explain", "SliderActionsVolume", "--device", "tablet"}).output,
                HasSubstr("  Page: none, on a device of the shape tablet\n"));
    EXPECT_THAT(ctl.run({"explain", "DisableWithKeyboard"}).output,
                HasSubstr("  Page: none, on a device of the shape phone-4\n"));
    EXPECT_EQ(explained({"DisableWithKeyboard"})[0]["page"], json());
}

TEST_F(Explain, storedKeyThatThePaneLacksIsSaidToBeThat) {
    writeSettings(phone, settingsOf({{"Mine", "<integer>5</integer>"}}));
    const Outcome outcome = ctl.run({"explain", "Mine"});
    expectDone(outcome);
    EXPECT_EQ(outcome.output, "Mine\n  Not a setting of the pane\n  Value: 5 (stored)\n");
    EXPECT_EQ(explained({"Mine"})[0]["kind"], json());
}

TEST_F(Explain, keyThatIsNeitherIsAFailureWithTheNearest) {
    expectFailure(ctl.run({"explain", "HotCornes"}), 1, "'HotCornes' is no known key; did you mean 'HotCorners'?");
}

TEST_F(Explain, looksOnly) {
    writeSettings(phone, settingsOf({{"MinimalControlCenterCondition", "<integer>6</integer>"}}));
    const std::string before = readSettings(phone);
    expectDone(ctl.run({"explain"}));
    EXPECT_EQ(readSettings(phone), before);
    EXPECT_FALSE(std::filesystem::exists(ctl.folder() / "state/trivel3/history"));
}

TEST_F(Explain, fileThatCannotBeReadIsSaidToBeToldByDefaults) {
    writeSettings(phone, "no property list");
    const Outcome outcome = ctl.run({"explain", "HotCorners"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.output, HasSubstr("✓ true"));
    EXPECT_THAT(outcome.errors, HasSubstr("default"));
}

TEST_F(Explain, ofAReportTellsOfTheCustomersSettings) {
    writeSettings(phone, settingsOf({{"HotCorners", "<false/>"}}));
    writeText(phone / "device-information.plist", settingsOf({{"ProductType", "<string>iPad4,1</string>"}}));
    const std::string report = ctl.folder() / "Trivel.plist";
    expectDone(ctl.run({"report", "-o", report}));
    EXPECT_THAT(ctl.run({"--phone", report, "explain", "HotCorners"}).output, HasSubstr("    ✓ false\n"));
    EXPECT_THAT(ctl.run({"--phone", report, "explain", "PeopleInToday"}).output, HasSubstr("Page: none"));
}

TEST_F(Explain, settingsThatDependOnEachOtherAreToldFromBothSides) {
    const json all = explained();
    std::set<std::pair<std::string, std::string>> forward;
    std::set<std::pair<std::string, std::string>> backward;
    const auto collect = [&](const std::string& key, const json& clauses) {
        for (const json& alternatives : clauses)
            for (const json& each : alternatives)
                forward.emplace(key, each["key"]);
    };
    for (const json& setting : all) {
        collect(setting["key"], setting["dependsOn"]);
        for (const json& value : setting["values"])
            collect(setting["key"], value["dependsOn"]);
        for (const json& dependent : setting["dependedOnBy"])
            backward.emplace(dependent, setting["key"]);
    }
    EXPECT_EQ(forward, backward);
    EXPECT_THAT(forward, Contains(std::pair("QuickLauncherAutoDismissDelay", "QuickLauncherIsPlaying")));
}

// Settings at random, and what the pages of a phone with these show.
class RandomSettings {
public:
    RandomSettings(const json& explained, std::mt19937& random) {
        for (const json& setting : explained) {
            const std::string key = setting["key"];
            const json& values = setting["values"];
            if (values.empty()) continue;
            _values[key] = values[random() % values.size()]["value"];
            if (!setting["flags"]) continue;
            _flags.insert(key);
            int sum = 0;
            for (const json& each : values)
                sum |= random() % 2 == 0 ? each["value"].get<int>() : 0;
            _values[key] = sum;
        }
    }

    std::string file() const {
        std::vector<std::pair<std::string, std::string>> entries;
        for (const auto& [key, value] : _values) {
            const std::string text = value.dump();
            entries.emplace_back(key, value.is_boolean() ? "<" + text + "/>" : "<integer>" + text + "</integer>");
        }
        return settingsOf(entries);
    }

    bool hold(const json& clauses) const {
        return std::ranges::all_of(clauses, [this](const json& alternatives) {
            return std::ranges::any_of(alternatives, [this](const json& each) { return holds(each); });
        });
    }

private:
    bool holds(const json& told) const {
        const json& own = _values.at(told["key"]);
        const bool isBit = _flags.contains(told["key"]) && told["value"] != 0;
        return isBit ? (own.get<int>() & told["value"].get<int>()) != 0 : own == told["value"];
    }

    std::map<std::string, json> _values;
    std::set<std::string> _flags;
};

bool leadsThere(const std::set<std::string>& usablePages, const std::string& page) {
    const std::size_t slash = page.rfind('/');
    if (page.empty()) return true;
    return usablePages.contains(page) && (slash == page.npos || leadsThere(usablePages, page.substr(0, slash)));
}

// The rows that a finger can reach and use, as "KEY" or "KEY VALUE".
std::set<std::string> usableRows(const Trivel3ctl& ctl, const std::string& device, const std::set<std::string>& pages) {
    std::set<std::string> rows;
    std::set<std::string> usablePages;
    for (const std::string& page : pages) {
        const Outcome shown = ctl.run({"show", page, "--json", "--device", device});
        if (shown.status != 0 || !leadsThere(usablePages, page)) continue;
        for (const json& row : rowsOf({{"page", json::parse(shown.output)}})) {
            if (!row["enabled"]) continue;
            if (row["kind"] == "link")
                usablePages.insert((page.empty() ? "" : page + "/") + row["label"].get<std::string>());
            if (row["kind"] == "switch") rows.insert(row["identifier"]);
            if (!row["key"].is_null()) rows.insert(row["key"].get<std::string>() + " " + row["value"].dump());
        }
    }
    return rows;
}

TEST_F(Explain, conditionsHoldWhereThePagesLetTheirRowsBeUsedAndNowhereElse) {
    std::mt19937 random(20261122);
    for (const std::string device : {"phone-3.5", "phone-4", "tablet"}) {
        const json all = explained({"--device", device});
        std::set<std::string> pages{"", "Advanced Options"};
        for (const json& setting : all)
            if (setting["page"].is_string()) pages.insert(setting["page"]);
        for (int round = 0; round < 12; ++round) {
            const RandomSettings settings(all, random);
            SCOPED_TRACE(device + "\n" + settings.file());
            writeSettings(phone, settings.file());
            std::set<std::string> expected;
            for (const json& setting : all) {
                if (setting["page"].is_null() || !settings.hold(setting["dependsOn"])) continue;
                if (setting["kind"] == "boolean") expected.insert(setting["key"]);
                if (setting["kind"] != "integer") continue;
                for (const json& value : setting["values"]) {
                    if (settings.hold(value["dependsOn"]))
                        expected.insert(setting["key"].get<std::string>() + " " + value["value"].dump());
                }
            }
            ASSERT_EQ(usableRows(ctl, device, pages), expected);
        }
    }
}

}  // namespace
}  // namespace terminal_test
