// SPDX-License-Identifier: MIT
// A settings file under the lease of another program, as those take that serve files to other machines: nobody can open
// it before the holder has given it back.
#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include "hosts/system/descriptor.h"
#include "mounted_phone.h"
#include "tests/kit/expectations.h"
#include "tests/kit/forked.h"

namespace mounts_test {

namespace {

// What the holder does when somebody else wants the file.
enum class WhenAsked { keeps, givesBack };

// The descriptor of the file in the holder's process.
int leasedFile = -1;

void giveBack(int) {
    ::fcntl(leasedFile, F_SETLEASE, F_UNLCK);
}

int holdLease(const std::string& file, WhenAsked whenAsked, int ready) {
    ::signal(SIGIO, whenAsked == WhenAsked::givesBack ? giveBack : SIG_IGN);
    leasedFile = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    const char taken = ::fcntl(leasedFile, F_SETLEASE, F_WRLCK) == 0 ? 'y' : 'n';
    if (::write(ready, &taken, 1) != 1) return 1;
    while (true)
        ::pause();
}

struct Lease : testing::Test {
    Lease() {
        ctl.usePhone(phone.folder);
        writeSettings(phone, manySettings());
    }
    ~Lease() override { end(); }

    // False where there are no leases.
    bool take(WhenAsked whenAsked) {
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC) != 0) return false;
        const hosts::Descriptor told{ends[0]};
        const hosts::Descriptor telling{ends[1]};
        holder = startForked([&] { return holdLease(phone.settingsFile(), whenAsked, telling.get()); });
        char taken = 'n';
        return ::read(told.get(), &taken, 1) == 1 && taken == 'y';
    }

    void end() {
        if (holder < 0) return;
        ::kill(holder, SIGKILL);
        waitForChild(holder);
        holder = -1;
    }

    Phone phone;
    Trivel3ctl ctl;
    pid_t holder = -1;
};

TEST_F(Lease, thatIsGivenBackIsWaitedFor) {
    if (!take(WhenAsked::givesBack)) GTEST_SKIP() << "no leases are given here";
    EXPECT_EQ(ctl.run({"set", "HotCorners", "off"}).status, 0);
    EXPECT_EQ(readSettings(phone), manySettingsBut({{"HotCorners", "<false/>"}}));
}

TEST_F(Lease, thatIsKeptFailsAChangeAndLeavesTheFile) {
    if (!take(WhenAsked::keeps)) GTEST_SKIP() << "no leases are given here";
    expectFailure(ctl.run({"set", "HotCorners", "off"}), 1, settingsPath);
    end();
    EXPECT_EQ(readSettings(phone), manySettings());
}

TEST_F(Lease, thatIsKeptFailsWhoAsksForSettings) {
    for (const auto& command :
         {std::vector<std::string>{"get", "HotCorners"}, {"list"}, {"show", "Advanced Options"}}) {
        SCOPED_TRACE(command.front());
        if (!take(WhenAsked::keeps)) GTEST_SKIP() << "no leases are given here";
        expectFailure(ctl.run(command), 1, settingsPath);
        end();
    }
    EXPECT_EQ(readSettings(phone), manySettings());
}

TEST_F(Lease, thatIsKeptCostsNothingWhenAPageIsOpened) {
    if (!take(WhenAsked::keeps)) GTEST_SKIP() << "no leases are given here";
    ctl.run({"drive"}, json{{"do", "tap"}, {"row", "Advanced Options"}}.dump() + "\n");
    end();
    EXPECT_EQ(readSettings(phone), manySettings());
}

}  // namespace
}  // namespace mounts_test
