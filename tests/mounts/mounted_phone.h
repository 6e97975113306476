// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "tests/kit/mount.h"
#include "tests/kit/trivel3ctl.h"

namespace mounts_test {

using namespace kit;

/// A way to mount a phone.
struct MountKind {
    const char* name;
    std::unique_ptr<Mount> (*mount)();
    /// Whether one file can take another's place in one step.
    bool replacesByRenaming = true;
};

/// For gtest, which names tests by it.
inline void PrintTo(const MountKind& kind, std::ostream* out) {
    *out << kind.name;
}

/// Every kind.
const std::vector<MountKind>& mountKinds();

/// Settings with forty keys of no program of ours, and a few of ours.
std::string manySettings();
/// The same with some keys set to other values' elements, or added.
std::string manySettingsBut(const std::vector<std::pair<std::string, std::string>>& changed);

/// Skipped where nothing can be mounted.
struct MountTest : testing::Test {
    void SetUp() override {
        if (!whyNoMounts().empty()) GTEST_SKIP() << whyNoMounts();
    }

    /// The programs work on this phone from now on.
    void use(const Mount& mount) { ctl.usePhone(mount.folder()); }

    Trivel3ctl ctl;
};

}  // namespace mounts_test
