// SPDX-License-Identifier: MIT
// Random sessions of two programs on one phone, with changes from outside, and all of it taken back again.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <random>

#include "hosts/session/settings_session.h"
#include "hosts/session/undo.h"
#include "hosts/terminal/drive/drive_session.h"
#include "platform/foundation/property_list.h"
#include "store/exceptions_file.h"
#include "store/preference_store.h"
#include "tests/kit/noted_outcomes.h"
#include "tests/kit/test_application.h"
#include "tests/kit/test_phone.h"

namespace random_sessions_test {
namespace {

using hosts::HistoryEntry;
using nlohmann::json;
using platform::Dictionary;
using platform::Value;

constexpr std::string_view settings = trivel3::PreferenceStore::settingsFile;
constexpr std::string_view exceptions = trivel3::exceptions::file;
constexpr const char* dictionaryKey = "CloseAllAppsExceptions";

// As values: the files may be written in any form.
std::string textOf(const Dictionary& content) {
    return *platform::writeXmlPropertyList(Value(content)).bytes;
}

/// A program at work on the phone, with what it keeps of its changes.
class Program {
public:
    Program(kit::TestPhone& phone, const std::string& folder)
        : _history(hosts::History(folder, "/phone", [] { return std::string("phone"); }), _outcomes),
          _services{phone, _notifications, _application, _device, &_history.recorder, &_history} {}

    const hosts::SessionServices& services() const { return _services; }
    hosts::PhoneHistory& history() { return _history; }
    const std::vector<std::string>& remarks() const { return _outcomes.remarks; }

private:
    kit::NotedOutcomes _outcomes;
    hosts::QuietNotifyCenter _notifications;
    hosts::QuietApplication _application;
    kit::TestDeviceQuery _device;
    hosts::PhoneHistory _history;
    hosts::SessionServices _services;
};

class RandomSessions {
public:
    explicit RandomSessions(unsigned long seed) : _random(seed) {
        std::filesystem::copy(
            TRIVEL3_SAMPLE_PHONE, _phone.machinePath("/"),
            std::filesystem::copy_options::recursive | std::filesystem::copy_options::overwrite_existing);
        _phone.remove(settings);
        _phone.remove(exceptions);
        if (pick(4) > 0) _phone.put(settings, someSettings());
        if (pick(2) > 0) _phone.put(exceptions, Dictionary{{"com.example.kettle", true}});
        _start = held();
        const auto started = _driven.start(TRIVEL3_TEST_SYSTEM_IMAGE, hosts::usualDeviceShape());
        if (!started) throw std::runtime_error(started.error().text());
        auto session =
            hosts::SettingsSession::load(_second.services(), TRIVEL3_TEST_SYSTEM_IMAGE, hosts::usualDeviceShape());
        if (!session) throw std::runtime_error(session.error().text());
        _session = *std::move(session);
    }

    void step() {
        switch (pick(10)) {
            case 0:
                return changeFromOutside();
            case 1:
                setByName();
                return;
            case 2:
                send({{"do", pick(2) > 0 ? "back" : "appear"}});
                return;
            case 3:
            case 4:
                // On to the pages on which repairs are made and applications are ticked.
                for (const char* title : {"Advanced Options", "Close All Apps", "Disable in Applications"})
                    send({{"do", "tap"}, {"row", title}});
                return;
            default:
                useSomeRow();
        }
    }

    /// What both files hold, and what they are to hold once all that our programs did is taken back.
    std::string contents() const { return textOf(held()); }
    std::string expected() const { return textOf(wanted()); }

    hosts::SettingsSession& session() { return *_session; }
    hosts::History::Reading history() {
        auto reading = _second.history().history.read();
        if (!reading) throw std::runtime_error(reading.error().text());
        return *std::move(reading);
    }
    platform::Result<std::vector<HistoryEntry>> takeBack(const std::vector<HistoryEntry>& changes) {
        hosts::QuietNotifyCenter notifications;
        return hosts::Undo({_phone, notifications, _second.history().recorder, {}})
            .takeBack(changes, hosts::Undo::Newer::stays);
    }
    std::vector<std::string> remarks() const {
        auto all = _first.remarks();
        all.insert(all.end(), _second.remarks().begin(), _second.remarks().end());
        return all;
    }

private:
    Dictionary held() const {
        return Dictionary{{"settings", _phone.dictionary(settings).value_or(Dictionary())},
                          {"exceptions", _phone.dictionary(exceptions).value_or(Dictionary())}};
    }
    Dictionary wanted() const {
        Dictionary content = *_start.find("settings")->dictionary();
        for (const auto& [key, value] : _outsideKeys)
            content.set(key, value);
        const auto entries = content.valueForKey(dictionaryKey);
        Dictionary ticks = entries ? *entries->dictionary() : Dictionary();
        for (const auto& [key, value] : _outsideEntries)
            ticks.set(key, value);
        if (entries || !_outsideEntries.empty()) content.set(dictionaryKey, ticks);
        return Dictionary{{"settings", content}, {"exceptions", *_start.valueForKey("exceptions")}};
    }

    std::size_t pick(std::size_t count) { return std::uniform_int_distribution<std::size_t>(0, count - 1)(_random); }

    Value someValue() {
        const Value values[] = {true,
                                false,
                                static_cast<int>(pick(8)),
                                2.5,
                                "text",
                                platform::Data{std::byte{1}},
                                platform::Date{1},
                                platform::Array{1, "a"}};
        return values[pick(std::size(values))];
    }

    Dictionary someSettings() {
        Dictionary content{{"MultiCenter", pick(2) > 0},         {"PeopleInToday", true},
                           {"ReachabilityMode", true},           {"MinimalControlCenterEnabled", pick(2) > 0},
                           {"MinimalControlCenterCondition", 6}, {"Mine", someValue()}};
        if (pick(2) > 0) content.set(dictionaryKey, Dictionary{{"com.example.lamp", true}});
        return content;
    }

    void send(const json& command) { _driven.answer(command.dump()); }

    void useSomeRow() {
        const json page = _driven.answer(R"({"do":"show"})").at("page");
        const std::size_t section = pick(page.at("sections").size());
        const auto& rows = page.at("sections").at(section).at("rows");
        if (rows.empty()) return;
        const std::size_t row = pick(rows.size());
        const json place = {{"section", section}, {"row", row}};
        if (rows.at(row).at("kind") == "switch") return send({{"do", "switch"}, {"row", place}, {"on", pick(2) > 0}});
        send({{"do", "tap"}, {"row", place}});
    }

    void setByName() {
        const auto access = _session->preferenceAccess();
        const auto known = (*access)->settings();
        const auto& setting = known[pick(known.size())];
        if (setting.key == dictionaryKey) return;
        (*access)->setPreferenceForKey(someValue(), setting.key);
        if (pick(3) > 0) (*access)->setPreferenceForKey(someValue(), "Ours");
        _session->drawn();
    }

    // Of what our programs leave alone: what they change too would be in the way of taking it back.
    void changeFromOutside() {
        Dictionary content = _phone.dictionary(settings).value_or(Dictionary());
        const std::string key = "Outside" + std::to_string(pick(3));
        content.set(key, _outsideKeys[key] = someValue());
        if (pick(2) > 0) {
            const std::string entry = "outside." + std::to_string(pick(3));
            const auto held = content.valueForKey(dictionaryKey);
            Dictionary ticks = held ? *held->dictionary() : Dictionary();
            ticks.set(entry, _outsideEntries[entry] = someValue());
            content.set(dictionaryKey, ticks);
        }
        _phone.put(settings, content);
    }

    std::mt19937_64 _random;
    kit::EventLog _log;
    kit::TestPhone _phone{_log};
    kit::TemporaryFolder _state;
    Program _first{_phone, _state / "history"};
    Program _second{_phone, _state / "history"};
    hosts::terminal::DriveSession _driven{_first.services(), {}};
    std::unique_ptr<hosts::SettingsSession> _session;
    Dictionary _start;
    std::map<std::string, Value> _outsideKeys;
    std::map<std::string, Value> _outsideEntries;
};

struct RandomSessionsTakenBack : testing::TestWithParam<unsigned long> {
    RandomSessionsTakenBack() {
        for (int step = 0; step < 60; ++step)
            sessions.step();
    }

    std::set<std::uint64_t> turns() {
        std::set<std::uint64_t> all;
        for (const HistoryEntry& entry : sessions.history().entries)
            all.insert(entry.turn);
        return all;
    }

    // How many turns were taken back before there was nothing more.
    std::size_t undoAll() {
        return countUntil("Not undone: there is nothing to undo", [this] { return sessions.session().undo(); });
    }
    std::size_t redoAll() {
        return countUntil("Not done again: there is nothing to do again", [this] { return sessions.session().redo(); });
    }
    template <class Step>
    std::size_t countUntil(const char* end, Step step) {
        for (std::size_t count = 0;; ++count) {
            const auto outcome = step();
            sessions.session().drawn();
            if (outcome) continue;
            EXPECT_EQ(outcome.error().reason, end);
            return count;
        }
    }

    RandomSessions sessions{GetParam()};
};

TEST_P(RandomSessionsTakenBack, turnByTurnGiveWhatTheFilesHeldAndComeBack) {
    ASSERT_THAT(sessions.remarks(), testing::IsEmpty());
    const std::string before = sessions.contents();
    const std::size_t made = turns().size();
    EXPECT_EQ(undoAll(), made);
    EXPECT_EQ(sessions.contents(), sessions.expected());
    EXPECT_EQ(redoAll(), made);
    EXPECT_EQ(sessions.contents(), before);
    EXPECT_EQ(undoAll(), made);
    EXPECT_EQ(sessions.contents(), sessions.expected());
    EXPECT_THAT(sessions.remarks(), testing::IsEmpty());
}

TEST_P(RandomSessionsTakenBack, byTheirNumbersGiveWhatTheFilesHeldAndSoDoTheUndos) {
    const std::string before = sessions.contents();
    const auto takeBackNewestFirst = [&](const std::set<std::uint64_t>& turns) {
        for (auto turn = turns.rbegin(); turn != turns.rend(); ++turn) {
            std::vector<std::uint64_t> numbers;
            for (const HistoryEntry& entry : sessions.history().entries) {
                if (entry.turn == *turn) numbers.push_back(entry.change);
            }
            const auto changes = hosts::changesNamed(sessions.history(), numbers);
            ASSERT_TRUE(changes) << changes.error().text();
            const auto taken = sessions.takeBack(*changes);
            ASSERT_TRUE(taken) << taken.error().text();
        }
    };
    const std::set<std::uint64_t> made = turns();
    takeBackNewestFirst(made);
    EXPECT_EQ(sessions.contents(), sessions.expected());
    std::set<std::uint64_t> undos = turns();
    std::erase_if(undos, [&](std::uint64_t turn) { return made.contains(turn); });
    EXPECT_EQ(undos.size(), made.size());
    takeBackNewestFirst(undos);
    EXPECT_EQ(sessions.contents(), before);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomSessionsTakenBack, testing::Range(1UL, 31UL));

}  // namespace
}  // namespace random_sessions_test
