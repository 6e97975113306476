// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

namespace desktop_tests {

/// Makes a test fail in which Qt, or QML, has warned of anything.
class NotedWarnings : public testing::EmptyTestEventListener {
public:
    /// From here on, warnings are noted.
    static void install();

    void OnTestStart(const testing::TestInfo& test) override;
    void OnTestEnd(const testing::TestInfo& test) override;
};

}  // namespace desktop_tests
