// SPDX-License-Identifier: MIT
// What "the last writer wins" means for two programs that change different settings at the same time.
#include <gtest/gtest.h>

#include <functional>
#include <utility>
#include <vector>

#include "platform/foundation/property_list.h"
#include "settings_count.h"
#include "store/preference_store.h"
#include "tests/kit/phone.h"
#include "tests/kit/print.h"
#include "tests/kit/test_platform.h"
#include "tests/kit/trivel3ctl.h"
#include "tests/kit/watched_calls.h"

namespace reliability_test {

using namespace kit;

namespace {

using platform::Value;
using trivel3::PreferenceStore;

// A program that is held up at one system call of its write, once.
class HeldUpWriter {
public:
    HeldUpWriter(const Phone& phone, std::string call, std::function<void()> meanwhile)
        : _calls(
              [this, call = std::move(call), meanwhile = std::move(meanwhile)](const std::string& made, std::size_t) {
                  if (made == call && !std::exchange(_heldUp, true)) meanwhile();
                  return 0;
              }),
          _files(openPhone(phone.folder, _calls)) {}

    void set(std::string_view key, bool value) {
        platform::Platform& usual = _host.services();
        platform::Platform platform{
            _files,     usual.notifications, usual.classes, usual.system, usual.application, usual.deviceQuery,
            usual.mail, usual.posts,         usual.device,  usual.screen};
        PreferenceStore{platform}.setPreferenceForKey(value, key);
    }
    bool wasHeldUp() const { return _heldUp; }

private:
    bool _heldUp = false;
    WatchedCalls _calls;
    hosts::PhoneFileSystem _files;
    kit::TestPlatform _host;
};

struct LastWriter : testing::Test {
    LastWriter() {
        ctl.usePhone(phone.folder);
        writeText(phone.settingsFile(), settingsNumber(7));
    }

    // What another program, the real one, does in the middle of ours.
    void setQuickSwitcher() {
        const Outcome outcome = ctl.run({"set", "QuickSwitcher", "off"});
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        const auto now = platform::readPropertyList(readText(phone.settingsFile()));
        EXPECT_EQ(*now.value->dictionary()->find("QuickSwitcher"), Value(false));
    }

    // The settings as they were at first, but for some that are off now.
    static std::string settingsWithOff(const std::vector<std::string>& keys) {
        auto content = *platform::readPropertyList(settingsNumber(7)).value->dictionary();
        for (const std::string& key : keys)
            content.set(key, false);
        return *platform::writeXmlPropertyList(Value(content)).bytes;
    }

    Phone phone;
    Trivel3ctl ctl;
};

TEST_F(LastWriter, keepsTheOthersChangeMadeBetweenItsReadingAndTheLookBeforeItsRenaming) {
    for (const char* call : {"openIn", "write", "changeMode", "synchronise"}) {
        writeText(phone.settingsFile(), settingsNumber(7));
        HeldUpWriter writer(phone, call, [this] { setQuickSwitcher(); });
        writer.set("HotCorners", false);

        EXPECT_TRUE(writer.wasHeldUp()) << call;
        EXPECT_EQ(readText(phone.settingsFile()), settingsWithOff({"HotCorners", "QuickSwitcher"})) << call;
        EXPECT_EQ(namesIn(phone.preferencesFolder()), std::vector<std::string>{settingsName});
    }
}

// The other waits for its turn, and then does without: so long as this takes, nobody else is held up.
TEST_F(LastWriter, losesTheOthersChangeMadeRightBeforeItsRenaming) {
    HeldUpWriter writer(phone, "rename", [this] { setQuickSwitcher(); });
    writer.set("HotCorners", false);

    EXPECT_TRUE(writer.wasHeldUp());
    EXPECT_EQ(readText(phone.settingsFile()), settingsWithOff({"HotCorners"}));
    EXPECT_EQ(namesIn(phone.preferencesFolder()), std::vector<std::string>{settingsName});
}

// The next change of any setting finds the file as it is, and keeps all of it.
TEST_F(LastWriter, keepsWhatWasWrittenBeforeItReads) {
    setQuickSwitcher();
    HeldUpWriter writer(phone, "rename", [] {});
    writer.set("HotCorners", false);

    EXPECT_EQ(readText(phone.settingsFile()), settingsWithOff({"HotCorners", "QuickSwitcher"}));
}

}  // namespace
}  // namespace reliability_test
