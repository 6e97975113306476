// SPDX-License-Identifier: MIT
#include "hosts/notifications/session_notify_center.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/socket.h>

#include <optional>
#include <thread>

#include "tests/kit/private_bus.h"
#include "tests/kit/timing.h"
#include "tests/kit/unix_socket.h"

namespace {

using namespace std::chrono_literals;
using hosts::NotificationStream;
using hosts::SessionNotifyCenter;
using hosts::waitForNotification;
using kit::ChildProcess;
using kit::PrivateBus;
using kit::SessionBusAddress;
using kit::timeOf;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* changed = "com.fenwary.trivel3.preferencesChanged";
constexpr const char* exceptionsChanged = "com.fenwary.trivel3.exceptionsChanged";
constexpr auto patience = 20s;
constexpr int noStop = -1;

std::string helper(const char* name) {
    return std::string{TEST_HELPERS} + "/" + name;
}

// Why what was posted waits; empty when nothing does.
std::string whyWaiting(SessionNotifyCenter& center) {
    const auto posted = center.flush();
    return posted ? "" : posted.error().text();
}

std::string heardBy(NotificationStream& stream) {
    return waitForNotification(stream, noStop, patience)
        .value_or("(nothing) " + (stream.ended() ? stream.ended()->text() : ""));
}

class OnABus : public testing::Test {
protected:
    std::unique_ptr<NotificationStream> observe() {
        auto stream = center.observe();
        EXPECT_TRUE(stream) << stream.error().text();
        return std::move(stream).value_or(nullptr);
    }

    PrivateBus bus;
    SessionBusAddress address{bus.address()};
    SessionNotifyCenter center{TEST_BUS_MODULE};
};

class SessionNotifyCenterOnABus : public OnABus {};

TEST_F(SessionNotifyCenterOnABus, isHeardByAnotherProcessOfItsOwnKind) {
    ChildProcess listener{{helper("notification_listener"), TEST_BUS_MODULE}};
    ASSERT_EQ(listener.readLine(), "listening");
    center.postNotification(changed);
    EXPECT_EQ(listener.readLine(), changed);
    center.postNotification(exceptionsChanged);
    EXPECT_EQ(listener.readLine(), exceptionsChanged);
    EXPECT_THAT(whyWaiting(center), IsEmpty());
}

// The bus's own tool sees what any program on the bus would.
TEST_F(SessionNotifyCenterOnABus, postsTheSignalThatOthersExpect) {
    ChildProcess monitor{{TEST_DBUS_MONITOR, "--session", "type='signal',interface='com.fenwary.DarwinNotifyCenter'"}};
    std::optional<std::string> line;
    const auto isSignal = [&] { return line && line->find("member=Posted") != std::string::npos; };
    for (int attempt = 0; attempt < 200 && !isSignal(); ++attempt) {
        center.postNotification(changed);
        while ((line = monitor.readLine(100ms)) && !isSignal()) {
        }
    }
    ASSERT_TRUE(isSignal());
    EXPECT_THAT(*line, HasSubstr("path=/com/fenwary/DarwinNotifyCenter; interface=com.fenwary.DarwinNotifyCenter; "
                                 "member=Posted"));
    EXPECT_THAT(*line, HasSubstr("destination=(null destination)"));
    EXPECT_EQ(monitor.readLine(), "   string \"" + std::string{changed} + "\"");
}

TEST_F(SessionNotifyCenterOnABus, keepsTheOrderOfPosts) {
    const auto stream = observe();
    for (int number = 0; number < 1000; ++number)
        center.postNotification("name " + std::to_string(number));
    for (int number = 0; number < 1000; ++number)
        ASSERT_EQ(heardBy(*stream), "name " + std::to_string(number));
    EXPECT_FALSE(stream->next());
}

TEST_F(SessionNotifyCenterOnABus, losesNothingWhenTheProcessEndsAtOnce) {
    const auto stream = observe();
    for (int run = 0; run < 50; ++run) {
        const std::string name = "name " + std::to_string(run);
        ChildProcess poster{{helper("notification_poster"), TEST_BUS_MODULE, name, name}};
        EXPECT_EQ(poster.wait(), 0);
        EXPECT_EQ(heardBy(*stream), name);
        EXPECT_EQ(heardBy(*stream), name);
    }
}

TEST_F(SessionNotifyCenterOnABus, findsABusThatHasBeenRestartedSinceTheLastPost) {
    center.postNotification(changed);
    EXPECT_THAT(whyWaiting(center), IsEmpty());
    bus.stop();
    bus.restart();
    const auto stream = observe();
    center.postNotification(exceptionsChanged);
    EXPECT_EQ(heardBy(*stream), exceptionsChanged);
}

TEST_F(SessionNotifyCenterOnABus, tellsABusThatComesBackWhatItMissedOnceEach) {
    center.postNotification(changed);
    bus.stop();
    for (int post = 0; post < 10; ++post)
        center.postNotification(post % 2 == 0 ? "missed" : "missed too");
    EXPECT_THAT(whyWaiting(center), HasSubstr("no session bus"));
    bus.restart();
    const auto stream = observe();
    std::this_thread::sleep_for(500ms);
    center.postNotification(exceptionsChanged);
    EXPECT_EQ(heardBy(*stream), "missed");
    EXPECT_EQ(heardBy(*stream), "missed too");
    EXPECT_EQ(heardBy(*stream), exceptionsChanged);
    EXPECT_FALSE(stream->next());
    EXPECT_THAT(whyWaiting(center), IsEmpty());
}

TEST_F(SessionNotifyCenterOnABus, dropsNamesThatCannotTravelAndGoesOn) {
    const auto stream = observe();
    center.postNotification("\xFF\xFE");
    center.postNotification(std::string_view{"a\0b", 3});
    EXPECT_THAT(whyWaiting(center), IsEmpty());
    center.postNotification("Caf\xC3\xA9");
    EXPECT_EQ(heardBy(*stream), "Caf\xC3\xA9");
}

TEST(SessionNotifyCenter, findsTheBusOfTheUsersRunTimeFolder) {
    const PrivateBus bus;
    ::unsetenv("DBUS_SESSION_BUS_ADDRESS");
    ::setenv("XDG_RUNTIME_DIR", bus.folder().c_str(), 1);
    SessionNotifyCenter center{TEST_BUS_MODULE};
    const auto stream = center.observe();
    ASSERT_TRUE(stream) << stream.error().text();
    center.postNotification(changed);
    ::unsetenv("XDG_RUNTIME_DIR");
    EXPECT_EQ(heardBy(**stream), changed);
}

void expectNoBus(SessionNotifyCenter& center, const std::string& reason) {
    EXPECT_THAT(whyWaiting(center), HasSubstr(reason));
    const auto stream = center.observe();
    ASSERT_FALSE(stream);
    EXPECT_THAT(stream.error().text(), HasSubstr(reason));
}

void expectQuickSilence(const std::string& reason) {
    SessionNotifyCenter center{TEST_BUS_MODULE};
    EXPECT_LT(timeOf([&] {
                  for (int post = 0; post < 1000; ++post)
                      center.postNotification(changed);
              }),
              1s);
    expectNoBus(center, reason);
}

TEST(SessionNotifyCenter, doesNothingWithoutABus) {
    const SessionBusAddress nowhere{"unix:path=/nonexistent/bus"};
    expectQuickSilence("no session bus: No such file or directory");
}

TEST(SessionNotifyCenter, doesNothingWithoutAnAddress) {
    ::unsetenv("DBUS_SESSION_BUS_ADDRESS");
    ::unsetenv("XDG_RUNTIME_DIR");
    expectQuickSilence("no session bus: ");
}

TEST(SessionNotifyCenter, doesNothingWithAnAddressThatMakesNoSense) {
    const SessionBusAddress nonsense{"nonsense"};
    expectQuickSilence("no session bus: ");
}

TEST(SessionNotifyCenter, doesNothingWithoutItsModule) {
    SessionNotifyCenter center{"/nonexistent/module.so"};
    center.postNotification(changed);
    expectNoBus(center, "/nonexistent/module.so");
}

TEST(SessionNotifyCenter, doesNotWaitForABusThatHangs) {
    const kit::TemporaryFolder folder;
    const std::string path = folder / "bus";
    const hosts::Descriptor silent = kit::bindSocket(path);
    ASSERT_EQ(::listen(silent.get(), 8), 0);

    const SessionBusAddress address{"unix:path=" + path};
    SessionNotifyCenter center{TEST_BUS_MODULE};
    EXPECT_LT(timeOf([&] { center.postNotification(changed); }), 4s);
    EXPECT_THAT(whyWaiting(center), HasSubstr("timed out"));
    EXPECT_LT(timeOf([&] {
                  for (int post = 0; post < 1000; ++post)
                      center.postNotification(changed);
              }),
              200ms);
}

// A daemon that is stopped takes connections, and answers nobody.
class SessionNotifyCenterOnAHangingBus : public OnABus {
protected:
    void startHanging() {
        stream = observe();
        bus.signal(SIGSTOP);
        EXPECT_LT(timeOf([&] { center.postNotification("first"); }), 4s);
        EXPECT_THAT(whyWaiting(center), HasSubstr("timed out"));
    }

    // Asks again and again: how soon the daemon answers is the machine's affair.
    bool isPosted() {
        bool posted = false;
        for (int attempt = 0; attempt < 200 && !posted; ++attempt) {
            std::this_thread::sleep_for(100ms);
            posted = center.flush().has_value();
        }
        return posted;
    }

    std::unique_ptr<NotificationStream> stream;
};

TEST_F(SessionNotifyCenterOnAHangingBus, losesNoPostOnceItAnswersAgain) {
    startHanging();
    for (const char* name : {"second", "third", "second"})
        center.postNotification(name);
    bus.signal(SIGCONT);
    // Long before twenty times the time that the failure took are over.
    for (int write = 0; write < 5; ++write) {
        std::this_thread::sleep_for(300ms);
        center.postNotification("write " + std::to_string(write));
    }
    EXPECT_TRUE(isPosted());
    for (const char* name : {"first", "second", "third", "write 0", "write 1", "write 2", "write 3", "write 4"})
        EXPECT_EQ(heardBy(*stream), name);
    EXPECT_FALSE(stream->next());
}

TEST_F(SessionNotifyCenterOnAHangingBus, isToldWhenItIsAskedAndAtTheEnd) {
    startHanging();
    bus.signal(SIGCONT);
    EXPECT_TRUE(isPosted());
    EXPECT_EQ(heardBy(*stream), "first");
    bus.signal(SIGSTOP);
    {
        SessionNotifyCenter other{TEST_BUS_MODULE};
        other.postNotification("last words");
        EXPECT_FALSE(other.flush());
        bus.signal(SIGCONT);
    }
    EXPECT_EQ(heardBy(*stream), "last words");
}

TEST_F(SessionNotifyCenterOnAHangingBus, costsLittleAndDoesNotKeepAProgramFromEnding) {
    bus.signal(SIGSTOP);
    EXPECT_LT(timeOf([] {
                  SessionNotifyCenter other{TEST_BUS_MODULE};
                  for (int post = 0; post < 1000; ++post)
                      other.postNotification("name " + std::to_string(post % 7));
              }),
              5s);
    bus.signal(SIGCONT);
}

class NotificationStreams : public OnABus {
protected:
    void sendByTool(const std::vector<std::string>& arguments) {
        std::vector<std::string> command{TEST_DBUS_SEND, "--session", "--type=signal"};
        command.insert(command.end(), arguments.begin(), arguments.end());
        ChildProcess tool{command};
        EXPECT_EQ(tool.wait(), 0);
    }
};

TEST_F(NotificationStreams, hearWhatOtherProgramsPost) {
    const auto stream = observe();
    sendByTool(
        {"/com/fenwary/DarwinNotifyCenter", "com.fenwary.DarwinNotifyCenter.Posted", "string:" + std::string{changed}});
    EXPECT_EQ(heardBy(*stream), changed);
}

TEST_F(NotificationStreams, hearNothingElse) {
    const auto stream = observe();
    const std::string path = "/com/fenwary/DarwinNotifyCenter";
    const std::string posted = "com.fenwary.DarwinNotifyCenter.Posted";
    sendByTool({path, posted, "int32:1"});
    sendByTool({path, posted});
    sendByTool({path, posted, "string:one", "string:two"});
    sendByTool({path, "com.fenwary.DarwinNotifyCenter.Other", "string:other"});
    sendByTool({path, "com.fenwary.Other.Posted", "string:other"});
    sendByTool({"/other", posted, "string:other"});
    center.postNotification(changed);
    EXPECT_EQ(heardBy(*stream), changed);
}

TEST_F(NotificationStreams, eachHearEverything) {
    const auto first = observe();
    const auto second = observe();
    center.postNotification(changed);
    EXPECT_EQ(heardBy(*first), changed);
    EXPECT_EQ(heardBy(*second), changed);
}

TEST_F(NotificationStreams, canBeWatchedByAnEventLoop) {
    const auto stream = observe();
    while (stream->next()) {
    }
    pollfd watched{stream->descriptor(), POLLIN, 0};
    EXPECT_EQ(::poll(&watched, 1, 0), 0);
    center.postNotification(changed);
    EXPECT_EQ(::poll(&watched, 1, 20'000), 1);
    EXPECT_EQ(stream->next(), changed);
    EXPECT_EQ(stream->next(), std::nullopt);
    EXPECT_FALSE(stream->ended());
}

TEST_F(NotificationStreams, stopWaitingWhenTheTimeIsUp) {
    const auto stream = observe();
    const auto waited = timeOf([&] { EXPECT_FALSE(waitForNotification(*stream, noStop, 50ms)); });
    EXPECT_GE(waited, 50ms);
    EXPECT_FALSE(stream->ended());
}

TEST_F(NotificationStreams, endWithTheBus) {
    const auto stream = observe();
    center.postNotification(changed);
    EXPECT_EQ(heardBy(*stream), changed);
    bus.stop();
    EXPECT_FALSE(waitForNotification(*stream, noStop, patience));
    ASSERT_TRUE(stream->ended());
    EXPECT_THAT(stream->ended()->text(), HasSubstr("the session bus is gone"));
    EXPECT_FALSE(waitForNotification(*stream, noStop, patience));
}

TEST_F(NotificationStreams, outliveTheCenterThatMadeThem) {
    auto maker = std::make_unique<SessionNotifyCenter>(TEST_BUS_MODULE);
    const auto stream = maker->observe();
    ASSERT_TRUE(stream);
    maker.reset();
    center.postNotification(changed);
    EXPECT_EQ(heardBy(**stream), changed);
}

TEST_F(NotificationStreams, endInGoodOrderOnASignal) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        ChildProcess listener{{helper("notification_listener"), TEST_BUS_MODULE}};
        ASSERT_EQ(listener.readLine(), "listening");
        center.postNotification(changed);
        EXPECT_EQ(listener.readLine(), changed);
        listener.signal(signal);
        EXPECT_EQ(listener.wait(), 0);
    }
}

TEST_F(NotificationStreams, tellAnotherProgramOfTheBusGoing) {
    ChildProcess listener{{helper("notification_listener"), TEST_BUS_MODULE}};
    ASSERT_EQ(listener.readLine(), "listening");
    bus.stop();
    EXPECT_EQ(listener.wait(), 1);
}

}  // namespace
