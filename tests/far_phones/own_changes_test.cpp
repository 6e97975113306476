// SPDX-License-Identifier: MIT
// What this program changes on a far phone while the phone's own programs change it too.
#include <filesystem>

#include "far_phone.h"
#include "hosts/phones/far/ssh_phone.h"

namespace far_phones_test {
namespace {

using platform::NewContent;
using platform::Result;

std::string settingsWith(int count) {
    return settingsOf({{"Count", "<integer>" + std::to_string(count) + "</integer>"}});
}

platform::Change replacingBy(const std::string& bytes) {
    return [bytes](std::optional<std::string_view>) -> Result<NewContent> { return NewContent{bytes}; };
}

struct OpenFarPhone : testing::Test {
    OpenFarPhone() {
        hosts::SshOptions options;
        options.command = host.ssh();
        auto opened = hosts::SshPhone::open(*hosts::parseSshAddress(host.address()), options, "/none");
        if (!opened) throw std::runtime_error(opened.error().text());
        phone = *std::move(opened);
        writeSettings(host.phone(), settingsWith(1));
    }

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

    SshHost host;
    std::unique_ptr<hosts::Phone> phone;
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
    change(replacingBy(before));
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

}  // namespace
}  // namespace far_phones_test
