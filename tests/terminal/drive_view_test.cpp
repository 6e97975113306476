// SPDX-License-Identifier: MIT
#include "drive.h"
#include "tests/kit/expectations.h"
#include "tests/kit/phone.h"

namespace terminal_test {

using namespace kit;

namespace {

using testing::Each;

json rootHeader(int width) {
    return {{"class", "UIView"},
            {"frame", {0, 0, width, 114}},
            {"subviews",
             {{{"class", "UILabel"},
               {"frame", {0, 10, width, 53}},
               {"text", "Trivel 3"},
               {"font", "HelveticaNeue-UltraLight 45"},
               {"colour", "#000000"},
               {"subviews", json::array()}},
              {{"class", "UILabel"},
               {"frame", {0, 63, width, 34}},
               {"text", "by Movane and Daxon\nThank you for your purchase."},
               {"font", "system 14"},
               {"colour", "#808080"},
               {"subviews", json::array()}}}}};
}

json viewOf(Drive& drive) {
    const json answer = drive.send({{"do", "view"}});
    EXPECT_EQ(answer.at("ok"), true);
    EXPECT_TRUE(answer.contains("page"));
    EXPECT_TRUE(answer.contains("events"));
    return answer.at("view");
}

// The first view of that class below this one.
const json* findView(const json& view, const std::string& className) {
    if (view.at("class") == className) return &view;
    for (const json& part : view.at("subviews")) {
        if (const json* found = findView(part, className)) return found;
    }
    return nullptr;
}

struct DriveView : testing::Test {
    DriveView() { ctl.usePhone(phone.folder); }

    Trivel3ctl ctl;
    Phone phone;
};

TEST_F(DriveView, headerOfTheRootPageSpansTheScreen) {
    const std::vector<std::pair<const char*, int>> widths = {
        {"phone-3.5", 320}, {"phone-4", 320}, {"phone-4.7", 375}, {"phone-5.5", 414}, {"tablet", 768}};
    for (const auto& [device, width] : widths) {
        SCOPED_TRACE(device);
        Drive drive(ctl, {"--device", device});
        EXPECT_EQ(viewOf(drive).at("subviews").at(0), rootHeader(width));
    }
}

TEST_F(DriveView, cellsFollowTheHeaderWithTheirImagesAndLabels) {
    Drive drive(ctl);
    const json view = viewOf(drive);
    ASSERT_EQ(view.at("subviews").size(), 7U);

    double bottom = 114;
    const std::vector<std::pair<const char*, const char*>> rows = {
        {"Multi-Center", "Multi-Center"},      {"Quick Switcher", "QuickSwitcher"}, {"Hot Corners", "HotCorners"},
        {"Advanced Options", "Configuration"}, {"The Creators", "Creators"},        {"Fenwary Support", "Support"}};
    for (std::size_t i = 0; i < rows.size(); ++i) {
        SCOPED_TRACE(rows[i].first);
        const json& cell = view.at("subviews").at(i + 1);
        EXPECT_EQ(cell.at("class"), "PSTableCell");
        EXPECT_EQ(cell.at("frame").at(2), 320);
        EXPECT_EQ(cell.at("frame").at(3), 44);
        EXPECT_GE(cell.at("frame").at(1), bottom);
        bottom = cell.at("frame").at(1).get<double>() + 44;
        const json* label = findView(cell, "UILabel");
        const json* image = findView(cell, "UIImageView");
        ASSERT_TRUE(label && image);
        EXPECT_EQ(label->at("text"), rows[i].first);
        EXPECT_EQ(image->at("image"), rows[i].second);
    }
}

TEST_F(DriveView, viewOfAPageWithoutAHeaderHoldsItsCellsAlone) {
    Drive drive(ctl);
    drive.tap("Advanced Options");
    const json view = viewOf(drive);
    EXPECT_EQ(view.at("subviews").at(0).at("class"), "PSTableCell");
    EXPECT_EQ(view.at("subviews").size(), rowsOf(drive.show()).size());
}

TEST_F(DriveView, everyViewSaysItsClassFrameAndParts) {
    const auto expectWhole = [](const json& view, const auto& self) -> void {
        EXPECT_FALSE(view.at("class").get<std::string>().empty());
        ASSERT_EQ(view.at("frame").size(), 4U);
        for (const json& number : view.at("frame"))
            EXPECT_TRUE(number.is_number());
        for (const json& part : view.at("subviews"))
            self(part, self);
    };
    Drive drive(ctl);
    expectWhole(viewOf(drive), expectWhole);
    drive.tap("The Creators");
    const json view = viewOf(drive);
    expectWhole(view, expectWhole);
    EXPECT_NE(findView(view, "KavixPreferencesProfileCell"), nullptr);
}

}  // namespace
}  // namespace terminal_test
