// SPDX-License-Identifier: MIT
// Long random sessions of the real pane, driven through the automation interface, held against an
// independent model of its rules after every step.
#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

#include "hosts/session/services.h"
#include "hosts/terminal/drive/drive_session.h"
#include "platform/foundation/property_list.h"
#include "store/preference_store.h"
#include "tests/kit/test_application.h"
#include "tests/kit/test_phone.h"
#include "tests/model/pane_model.h"

namespace {

using nlohmann::json;
using platform::Value;

unsigned long numberFromEnvironment(const char* name, unsigned long usual) {
    const char* text = std::getenv(name);
    return text ? std::strtoul(text, nullptr, 10) : usual;
}

struct Shape {
    const char* name;
    model::Device device;
};

// What others do to the settings file in the course of a session.
constexpr const char* changedKeys[] = {"MultiCenter",
                                       "QuickSwitcher",
                                       "HotCorners",
                                       "ReachabilityMode",
                                       "MinimalControlCenterEnabled",
                                       "MinimalControlCenterCondition",
                                       "OpenToLastApp",
                                       "OpenToLastAppWithQS",
                                       "QuickLauncherNotPlaying",
                                       "QuickLauncherIsPlaying",
                                       "QuickLauncherAutoDismissDelay",
                                       "SliderActionsBrightness",
                                       "SliderActionsVolume",
                                       "SliderActionsDisableHUD",
                                       "AlbumArtworkAutoDisplay",
                                       "AlbumArtworkAutoDismissDelay",
                                       "AccessAppSwitcher",
                                       "PeopleInToday",
                                       "UnknownKey"};
constexpr const char* damagedFiles[] = {"<array/>", "<plist><dict><key>MultiCenter</key>"};

// Icons are the resources' business, not the rules'.
json withoutIcons(json page) {
    for (json& section : page["sections"]) {
        for (json& row : section["rows"])
            row.erase("icon");
    }
    return page;
}

class RandomSession {
public:
    RandomSession(const Shape& shape, unsigned long seed)
        : _random(seed), _phone(_log), _session({_phone, _notifications, _application, _deviceQuery}, {}) {
        const auto started = _session.start(TRIVEL3_TEST_SYSTEM_IMAGE, *hosts::findDeviceShape(shape.name));
        if (!started) ADD_FAILURE() << started.error().text();
        _model.emplace(_settings, shape.device);
    }

    /// One random step; false when pane and model have come to differ.
    bool step() {
        const json command = chooseStep();
        const json answer = _session.answer(command.dump());
        const json expectedEvents = _model->takeEvents();
        EXPECT_EQ(answer["ok"], !_expectRefusal) << command;
        EXPECT_EQ(answer["events"], expectedEvents) << command;
        EXPECT_EQ(withoutIcons(answer["page"]), _model->page()) << command;
        EXPECT_EQ(storedContent(), _settings.content ? Value(*_settings.content) : Value()) << command;
        return !testing::Test::HasFailure();
    }

private:
    std::size_t pick(std::size_t count) { return std::uniform_int_distribution<std::size_t>(0, count - 1)(_random); }
    bool flip() { return pick(2) == 0; }

    Value storedContent() const {
        auto content = _phone.dictionary(trivel3::PreferenceStore::settingsFile);
        return content ? Value(*content) : Value();
    }

    json chooseStep() {
        _expectRefusal = false;
        switch (pick(12)) {
            case 0:
                _expectRefusal = !_model->back();
                return {{"do", "back"}};
            case 1:
                _model->appear();
                return {{"do", "appear"}};
            case 2:
                _model->reload();
                return {{"do", "reload"}};
            case 3:
                changeFileFromOutside();
                return {{"do", "show"}};
            case 4:
            case 5:
            case 6:
            case 7:
                return moveSomeSwitch();
            default:
                return tapSomeRow();
        }
    }

    static json reference(const model::PaneModel::Place& place) {
        return {{"section", place.section}, {"row", place.row}};
    }

    // Pages that the model does not cover stay closed.
    static bool leadsOutside(const model::Row& row) {
        return row.label == "The Creators" || row.label == "Fenwary Support" || row.label == "Close All Apps" ||
               row.label == "Disable in Applications";
    }

    json tapSomeRow() {
        const auto places = _model->places();
        const auto place = places[pick(places.size())];
        if (leadsOutside(*place.content)) return {{"do", "show"}};
        _model->tap(place);
        return {{"do", "tap"}, {"row", reference(place)}};
    }

    json moveSomeSwitch() {
        const auto places = _model->places();
        const auto place = places[pick(places.size())];
        const bool on = flip();
        _expectRefusal = place.content->kind != model::Row::Kind::switchRow || _model->isGreyed(place);
        if (!_expectRefusal) _model->moveSwitch(place, on);
        return {{"do", "switch"}, {"row", reference(place)}, {"on", on}};
    }

    Value someValue() {
        const Value values[] = {true,
                                false,
                                static_cast<int>(pick(10)),
                                static_cast<int>(pick(10)),
                                static_cast<int>(pick(10)),
                                -3,
                                INT64_MIN,
                                UINT64_MAX,
                                2.9,
                                "4",
                                "YES",
                                "",
                                platform::Data{std::byte{1}},
                                platform::Date{1},
                                platform::Array{1},
                                platform::Dictionary{{"a", 1}}};
        return values[pick(std::size(values))];
    }

    void changeFileFromOutside() {
        switch (pick(8)) {
            case 0:
                _phone.remove(trivel3::PreferenceStore::settingsFile);
                _settings.content.reset();
                break;
            case 1:
                _phone.put(trivel3::PreferenceStore::settingsFile, damagedFiles[pick(std::size(damagedFiles))]);
                _settings.content.reset();
                break;
            default:
                setSomeKeys();
        }
    }

    void setSomeKeys() {
        if (!_settings.content) _settings.content.emplace();
        for (std::size_t i = pick(4) + 1; i > 0; --i)
            _settings.content->set(changedKeys[pick(std::size(changedKeys))], someValue());
        const Value content(*_settings.content);
        const auto file = flip() ? platform::writeXmlPropertyList(content) : platform::writeBinaryPropertyList(content);
        _phone.put(trivel3::PreferenceStore::settingsFile, *file.bytes);
    }

    std::mt19937_64 _random;
    kit::EventLog _log;
    kit::TestPhone _phone;
    hosts::QuietNotifyCenter _notifications;
    hosts::QuietApplication _application;
    kit::TestDeviceQuery _deviceQuery;
    hosts::terminal::DriveSession _session;
    model::SettingsModel _settings;
    std::optional<model::PaneModel> _model;
    bool _expectRefusal = false;
};

std::string shapeName(const testing::TestParamInfo<Shape>& shape) {
    std::string name = shape.param.name;
    for (char& c : name)
        c = c == '-' || c == '.' ? '_' : c;
    return name;
}

class DriveAgainstModel : public testing::TestWithParam<Shape> {};

TEST_P(DriveAgainstModel, agreesOnRowsGreyingFootersEventsAndFileAfterEveryStep) {
    const unsigned long steps = numberFromEnvironment("TRIVEL3_MODEL_STEPS", 3000);
    const unsigned long firstSeed = numberFromEnvironment("TRIVEL3_MODEL_SEED", 1);
    constexpr unsigned long stepsOfOneSession = 500;
    for (unsigned long done = 0; done < steps; done += stepsOfOneSession) {
        const unsigned long seed = firstSeed + done / stepsOfOneSession;
        SCOPED_TRACE("TRIVEL3_MODEL_SEED=" + std::to_string(seed));
        RandomSession session(GetParam(), seed);
        for (unsigned long i = 0; i < stepsOfOneSession; ++i)
            ASSERT_TRUE(session.step()) << "step " << i;
    }
}

INSTANTIATE_TEST_SUITE_P(Devices, DriveAgainstModel,
                         testing::Values(Shape{"phone-4", model::Device::tallPhone},
                                         Shape{"phone-5.5", model::Device::tallPhone},
                                         Shape{"phone-3.5", model::Device::shortPhone},
                                         Shape{"tablet", model::Device::tablet}),
                         shapeName);

}  // namespace
