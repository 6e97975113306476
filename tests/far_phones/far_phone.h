// SPDX-License-Identifier: MIT
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/kit/expectations.h"
#include "tests/kit/ssh_host.h"
#include "tests/kit/trivel3ctl.h"

namespace far_phones_test {

using namespace kit;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// The program on a phone that is reached by its address, of a known shape.
struct FarPhone : testing::Test {
    explicit FarPhone(const SshHost::Options& options = {}) : host(options) { use(host.port()); }

    void use(std::uint16_t port) {
        host.letUse(ctl, port);
        host.nameModel("iPhone6,1");
    }

    SshHost host;
    Trivel3ctl ctl;
};

}  // namespace far_phones_test
