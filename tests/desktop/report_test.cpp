// SPDX-License-Identifier: MIT
// A support report in a window.
#include <QImage>
#include <QTest>
#include <stdexcept>
#include <string>

#include "hosts/desktop/model/banners.h"
#include "tests/desktop/desk.h"
#include "tests/desktop/real_program.h"

namespace desktop_tests {
namespace {

constexpr const char* report =
    "<plist><dict><key>Packages</key><string>p</string><key>ProductType</key><string>iPhone8,1</string>"
    "<key>Preferences</key><dict><key>HotCorners</key><false/></dict></dict></plist>";

class ReportInAWindow : public Desk {
protected:
    ReportInAWindow() {
        kit::writeText(folder / "Trivel.plist", report);
        hosts::PhoneOptions options;
        options.phone = folder / "Trivel.plist";
        auto opened = hosts::OpenedPhone::openPhoneOrReport(options, "desktop_test");
        if (!opened) throw std::runtime_error(opened.error().text());
        opened->installation.systemImage = TRIVEL3_SYSTEM_IMAGE;
        phone.reset();
        phone.emplace(*std::move(opened));
    }
    bool saysThatItIsOne() { return bannerText().startsWith("Support report: changes are tries"); }
};

TEST_F(ReportInAWindow, saysSoOnEveryPage) {
    open();
    EXPECT_TRUE(saysThatItIsOne()) << bannerText().toStdString();
    EXPECT_EQ(named(view().rootObject(), "Close"), nullptr) << "it stays";
    openPage({"Advanced Options", "Slider Actions"});
    EXPECT_TRUE(saysThatItIsOne());
    navigation().banners().close();
    EXPECT_TRUE(saysThatItIsOne());
}

TEST_F(ReportInAWindow, standsBackWhileThereIsSomethingElseToRead) {
    open();
    navigation().tell({.text = "The phone is tired"});
    settle();
    EXPECT_EQ(bannerText(), "The phone is tired");
    EXPECT_EQ(navigation().banners().waiting(), 0);
    click(named(view().rootObject(), "Close"));
    EXPECT_TRUE(saysThatItIsOne());
}

TEST_F(ReportInAWindow, takesTriesBackAtOnce) {
    open();
    session->watchFiles();
    const std::string before = settings();
    clickSwitch("Multi-Center");
    clickSwitch("Hot Corners");
    EXPECT_TRUE(settingIs("MultiCenter", "<false/>")) << settings();
    EXPECT_TRUE(settingIs("HotCorners", "<true/>")) << settings();
    click(named(view().rootObject(), "Take Back"));
    EXPECT_EQ(settings(), before);
    EXPECT_TRUE(waitFor([this] { return row("Multi-Center")->property("isOn").toBool(); }));
    EXPECT_FALSE(row("Hot Corners")->property("isOn").toBool());
    EXPECT_EQ(bannerText(), "All tries are taken back.");
    navigation().banners().close();
    EXPECT_TRUE(saysThatItIsOne());
    // Again, with nothing left of what was tried before.
    clickSwitch("Quick Switcher");
    EXPECT_TRUE(settingIs("QuickSwitcher", "<false/>")) << settings();
    click(named(view().rootObject(), "Take Back"));
    EXPECT_EQ(settings(), before);
    EXPECT_EQ(kit::readText(folder / "Trivel.plist"), report);
}

class ReportOfProgram : public RealProgram {
protected:
    ReportOfProgram() { kit::writeText(folder / "Trivel.plist", report); }
};

TEST_F(ReportOfProgram, isDrawnInTheCustomersSize) {
    const QString pictures = pathOf("pictures");
    const Result drawn = run({"--phone", pathOf("Trivel.plist"), "--screenshots", pictures});
    EXPECT_EQ(drawn.status, 0) << drawn.errors.toStdString();
    EXPECT_EQ(QImage(pictures + "/trivel-3.png").size(), QSize(750, 1334));
}

TEST_F(ReportOfProgram, isOpenedAsAnArgumentAndNotRemembered) {
    kit::ChildProcess process(command({pathOf("Trivel.plist")}), environment);
    ASSERT_TRUE(QTest::qWaitFor([this] { return isListening(); }, patience));
    end(process);
    const std::string memory = kit::readText(folder / "config/trivel3/trivel3-settings.ini");
    EXPECT_EQ(memory.find("Trivel.plist"), std::string::npos) << memory;
}

}  // namespace
}  // namespace desktop_tests
