// SPDX-License-Identifier: MIT
// What this program changes on a far phone while the phone's own programs change it too.
#include <poll.h>

#include <filesystem>

#include "far_phone.h"

namespace far_phones_test {
namespace {

using platform::NewContent;
using platform::Result;

constexpr const char* listening = "test.listening";
constexpr const char* afterwards = "test.afterwards";

std::string settingsWith(int count) {
    return settingsOf({{"Count", "<integer>" + std::to_string(count) + "</integer>"}});
}

struct OpenFarPhone : testing::Test {
    OpenFarPhone() { writeSettings(host.phone(), settingsWith(1)); }

    std::string read() const {
        std::string contents;
        EXPECT_TRUE(phone->files().readFile(settingsPath, contents));
        return contents;
    }

    void change(const platform::Change& change) const {
        const auto outcome = phone->files().changeFile(settingsPath, change);
        EXPECT_TRUE(outcome) << outcome.error().text();
        EXPECT_EQ(temporariesIn(host.phone().folder), 0U);
    }

    void replaceBy(const std::string& bytes) const {
        EXPECT_EQ(replaceFile(phone->files(), settingsPath, bytes), "");
        EXPECT_EQ(temporariesIn(host.phone().folder), 0U);
    }

    SshHost host;
    std::unique_ptr<hosts::Phone> phone = host.openPhone(host.address());
};

// With an addition to whatever is there.
const platform::Change addition = [](std::optional<std::string_view> held) -> Result<NewContent> {
    return NewContent{std::string(held.value_or("nothing")) + "<!-- more -->"};
};

TEST_F(OpenFarPhone, changeIsMadeOnWhatThePhonesProgramWroteSinceTheFileWasRead) {
    // The first has the size of what was read, and is of the same second perhaps.
    for (const int count : {2, 1000}) {
        writeSettings(host.phone(), settingsWith(1));
        read();
        writeSettings(host.phone(), settingsWith(count));
        change(addition);
        EXPECT_EQ(readSettings(host.phone()), settingsWith(count) + "<!-- more -->");
    }
}

TEST_F(OpenFarPhone, changeToWhatWasReadReplacesWhatThePhonesProgramWroteSince) {
    const std::string before = read();
    writeSettings(host.phone(), settingsWith(2));
    replaceBy(before);
    EXPECT_EQ(readSettings(host.phone()), before);
}

TEST_F(OpenFarPhone, linkThatThePhonesProgramMadeSinceTheFileWasReadStays) {
    read();
    std::filesystem::rename(host.phone().settingsFile(), host.phone() / "elsewhere.plist");
    std::filesystem::create_symlink(host.phone() / "elsewhere.plist", host.phone().settingsFile());
    change(addition);
    EXPECT_TRUE(std::filesystem::is_symlink(host.phone().settingsFile()));
    EXPECT_EQ(readText(host.phone() / "elsewhere.plist"), settingsWith(1) + "<!-- more -->");
}

TEST_F(OpenFarPhone, fileThatWasRemovedSinceItWasReadIsMadeAnew) {
    read();
    std::filesystem::remove(host.phone().settingsFile());
    change(addition);
    EXPECT_EQ(readSettings(host.phone()), "nothing<!-- more -->");
}

struct ObservedFarPhone : OpenFarPhone {
    ObservedFarPhone() {
        const std::vector<std::string> names{preferencesChanged, listening, afterwards};
        events = phone->observe({}, names);
        // The watcher on the phone may be a moment behind.
        for (bool isListening = false; !isListening;) {
            host.post(listening);
            ::usleep(20'000);
            while (const auto event = events->next())
                isListening = event->name == listening;
        }
    }

    std::string nextNotification() const {
        for (;;) {
            while (const auto event = events->next()) {
                if (event->name != listening) return event->name;
            }
            pollfd wait{events->descriptor(), POLLIN, 0};
            const auto patience = std::chrono::milliseconds(ChildProcess::patience).count();
            if (::poll(&wait, 1, static_cast<int>(patience)) <= 0) return "nothing";
        }
    }

    void post() const {
        phone->notifications().postNotification(preferencesChanged);
        phone->settle();
    }

    std::unique_ptr<hosts::PhoneEvents> events;
};

TEST_F(ObservedFarPhone, echoOfOurOwnPostIsNotTold) {
    replaceBy(settingsWith(2));
    post();
    host.post(afterwards);
    EXPECT_EQ(nextNotification(), afterwards);
}

TEST_F(ObservedFarPhone, notificationThatStandsForOurChangeAndAnothersIsTold) {
    replaceBy(settingsWith(2));
    host.swallowNextPost();
    post();
    ASSERT_THAT(host.posted(), testing::Not(testing::Contains(preferencesChanged)));
    writeSettings(host.phone(), settingsWith(3));
    host.post(preferencesChanged);
    host.post(afterwards);
    EXPECT_EQ(nextNotification(), preferencesChanged);
    EXPECT_EQ(nextNotification(), afterwards);
}

struct MonitoredFarPhone : FarPhone {
    MonitoredFarPhone() : monitor(ctl, {"monitor"}) {
        EXPECT_EQ(monitor.readErrorLine(), "listening");
        // The watcher on the phone may be a moment behind.
        while (!monitor.readLine(std::chrono::milliseconds{500}))
            host.post(preferencesChanged);
    }

    // The last posts of the beginning may be told first.
    std::string nextChange() {
        for (;;) {
            const auto line = monitor.readLine();
            if (line != preferencesChanged) return line.value_or("nothing");
        }
    }

    RunningTrivel3ctl monitor;
};

TEST_F(MonitoredFarPhone, tellsEachChangeOfAnotherProgramOfOursOnce) {
    expectDone(ctl.run({"set", "HotCorners", "false"}));
    EXPECT_EQ(nextChange(), "HotCorners: (nothing) -> false");
    for (const char* value : {"true", "false", "true"}) {
        expectDone(ctl.run({"set", "HotCorners", value}));
        EXPECT_EQ(monitor.readLine(), preferencesChanged);
        EXPECT_THAT(monitor.readLine().value_or(""), HasSubstr(std::string("-> ") + value));
    }
    monitor.signal(SIGINT);
    EXPECT_EQ(monitor.finish().output, "");
}

TEST_F(MonitoredFarPhone, tellsTwoChangesThatOneNotificationFollowsTogether) {
    host.swallowNextPost();
    expectDone(ctl.run({"set", "HotCorners", "false"}));
    writeSettings(host.phone(), settingsOf({{"HotCorners", "<false/>"}, {"Mine", "<true/>"}}));
    host.post(preferencesChanged);
    EXPECT_EQ(nextChange(), "HotCorners: (nothing) -> false");
    EXPECT_EQ(nextChange(), "Mine: (nothing) -> true");
    host.post(preferencesChanged);
    EXPECT_EQ(monitor.readLine(), preferencesChanged);
}

}  // namespace
}  // namespace far_phones_test
