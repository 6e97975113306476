// SPDX-License-Identifier: MIT
#include <filesystem>

#include "far_phone.h"

namespace far_phones_test {
namespace {

/// A phone whose SFTP server answers in any order, which the protocol lets it.
struct ShuffledAnswers : FarPhone, testing::WithParamInterface<int> {
    ShuffledAnswers() : FarPhone({.hasSubsystem = false}) {
        writeText(server, "#!/bin/sh\nexec " TEST_PYTHON " " TEST_SHUFFLING_SERVER " " TEST_SFTP_SERVER_PATH " " +
                              std::to_string(GetParam()) + " '" + log + "'\n");
        std::filesystem::permissions(server, std::filesystem::perms::owner_all);
        writeSettings(host.phone(), settingsOf({{"HotCorners", "<false/>"}, {"Mine", "<string>x</string>"}}));
        for (int number = 0; number < 60; ++number)
            addNumbered(number);
    }

    // An application whose name is of a length of its own.
    void addNumbered(int number) const {
        const std::string name = std::to_string(number) + std::string(static_cast<std::size_t>(number), 'x');
        writeText(
            host.phone().folder + userApplications + "/" + std::to_string(number) + "/Numbered.app/Info.plist",
            settingsOf({{"CFBundleDisplayName", "<string>" + name + "</string>"},
                        {"CFBundleExecutable", "<string>Numbered</string>"},
                        {"CFBundleIdentifier", "<string>example.numbered" + std::to_string(number) + "</string>"}}));
    }

    Outcome runFar(Trivel3ctl::Arguments arguments) const {
        arguments.insert(arguments.begin(), {"--sftp-server", server});
        return ctl.run(arguments);
    }

    int moved() const {
        int all = 0;
        for (const std::string& line : linesOf(readText(log)))
            all += std::stoi(line);
        return all;
    }

    std::string server = host.inside("shuffling-server");
    std::string log = host.inside("moved");
};

TEST_P(ShuffledAnswers, giveWhatTheSameFolderDoes) {
    Trivel3ctl near;
    near.usePhone(host.phone().folder);
    const std::vector<Trivel3ctl::Arguments> all = {
        {"list"}, {"show", "Advanced Options/Close All Apps"}, {"show", "Advanced Options/Disable in Applications"}};
    for (const auto& arguments : all) {
        writeText(log, "");
        const Outcome far = runFar(arguments);
        expectDone(far);
        EXPECT_EQ(far.output, near.run(arguments).output) << arguments.back();
        EXPECT_GT(moved(), 0) << arguments.back();
    }
}

TEST_P(ShuffledAnswers, changeWhatIsToBeChangedAndNothingElse) {
    writeText(log, "");
    expectDone(runFar({"set", "HotCorners", "true", "QuickSwitcher", "off"}));
    EXPECT_EQ(readSettings(host.phone()),
              settingsOf({{"HotCorners", "<true/>"}, {"Mine", "<string>x</string>"}, {"QuickSwitcher", "<false/>"}}));
    EXPECT_THAT(host.posted(), ElementsAre(preferencesChanged));
    EXPECT_EQ(temporariesIn(host.phone().folder), 0U);
    EXPECT_GT(moved(), 0);
}

INSTANTIATE_TEST_SUITE_P(BySeed, ShuffledAnswers, testing::Values(1, 2, 3),
                         [](const auto& seed) { return "Seed" + std::to_string(seed.param); });

}  // namespace
}  // namespace far_phones_test
