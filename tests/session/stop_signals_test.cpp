// SPDX-License-Identifier: MIT
#include "hosts/system/arriving_signals.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>

#include "tests/kit/forked.h"

namespace {

bool isReadable(int descriptor) {
    pollfd watched{descriptor, POLLIN, 0};
    return ::poll(&watched, 1, 0) == 1;
}

TEST(StopSignals, makeADescriptorReadableInsteadOfEndingTheProcess) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        const int status = kit::runForked([=] {
            const hosts::StopSignals stop;
            if (isReadable(stop.descriptor())) return 1;
            ::raise(signal);
            return isReadable(stop.descriptor()) ? 0 : 2;
        });
        EXPECT_EQ(status, 0) << signal;
    }
}

TEST(StopSignals, endTheProcessAgainAfterwards) {
    const int status = kit::runForked([] {
        {
            const hosts::StopSignals stop;
            ::raise(SIGTERM);
        }
        ::raise(SIGTERM);
        return 0;
    });
    EXPECT_EQ(status, -SIGTERM);
}

TEST(StopSignals, thatArrivedAreSpentAfterwards) {
    const int status = kit::runForked([] {
        {
            const hosts::StopSignals stop;
            ::raise(SIGTERM);
            ::raise(SIGINT);
        }
        return 0;
    });
    EXPECT_EQ(status, 0);
}

}  // namespace
