// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "hosts/desktop/program/settings_window.h"
#include "tests/kit/temporary_folder.h"

namespace desktop_tests {
namespace {

/// A folder that stands for that of the machine's device files.
class Renderer : public testing::Test {
protected:
    void put(const char* device) {
        const auto file = folder.path() / device;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file) << "";
    }
    bool findsProcessor() const { return hosts::desktop::hasGraphicsProcessor(folder.path()); }

    kit::TemporaryFolder folder;
};

TEST_F(Renderer, findsNoGraphicsProcessorWhereOnlyAScreenIs) {
    EXPECT_FALSE(findsProcessor());
    put("fb0");
    put("dri/card0");
    EXPECT_FALSE(findsProcessor());
}

TEST_F(Renderer, findsTheGraphicsProcessorsThatTheKernelDrives) {
    put("dri/renderD128");
    EXPECT_TRUE(findsProcessor());
}

TEST_F(Renderer, findsThoseWithDriversOfTheirOwn) {
    put("nvidiactl");
    EXPECT_TRUE(findsProcessor());
}

}  // namespace
}  // namespace desktop_tests
