// SPDX-License-Identifier: MIT
#include <QTest>

#include "tests/desktop/desktop_portal.h"
#include "tests/desktop/patches.h"
#include "tests/desktop/real_program.h"
#include "tests/desktop/virtual_display.h"

namespace desktop_tests {

/// The real program in a window of a real display, on a desktop whose user changes their mind.
class TasteOfTheDesktop : public RealProgram {
protected:
    const QString appearance = QStringLiteral("org.freedesktop.appearance");
    const QString gnome = QStringLiteral("org.gnome.desktop.interface");

    static constexpr QRgb lightPage = qRgb(0xef, 0xef, 0xf4);
    static constexpr QRgb darkPage = qRgb(0, 0, 0);
    static constexpr QRgb switchOn = qRgb(0x21, 0x94, 0x40);
    static constexpr QRgb strongSwitchOn = qRgb(0x10, 0x75, 0x35);

    void SetUp() override {
        ASSERT_TRUE(display.start()) << "no display could be started";
        environment["DISPLAY"] = display.name().toStdString();
        environment["QT_QPA_PLATFORM"] = "xcb";
    }

    void TearDown() override {
        if (program && !program->hasEnded()) end(*program);
    }

    void open(DesktopPortal::Settings settings, const QStringList& options = {}) {
        portal.emplace(bus.address(), std::move(settings));
        program.emplace(command(QStringList{"--phone", phone} + options), environment);
        ASSERT_TRUE(waitFor([this] { return !display.window().isEmpty() || program->hasEnded(); }));
        ASSERT_FALSE(program->hasEnded()) << program->finish().errors;
        display.focusWindow();
    }

    static bool waitFor(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, patience); }

    bool pageBecomes(QRgb colour) {
        return waitFor([&] { return display.pixel(display.window().topLeft() + QPoint(4, 60)) == colour; });
    }

    bool shows(QRgb colour) {
        return waitFor([&] { return !extent(display.picture(), colour).isEmpty(); });
    }

    // How far down the first switch is that is on; 0 while there is none.
    int firstSwitch() {
        const auto found = patches(display.picture(), switchOn);
        return found.empty() ? 0 : found.front().top();
    }

    VirtualDisplay display;
    std::optional<DesktopPortal> portal;
    std::optional<kit::ChildProcess> program;
};

TEST_F(TasteOfTheDesktop, isAskedForAtTheStart) {
    open({{appearance, {{"color-scheme", 1U}}}});
    EXPECT_TRUE(pageBecomes(darkPage));
    EXPECT_TRUE(portal->wasAsked());
}

TEST_F(TasteOfTheDesktop, forDarkIsFollowedWhileTheWindowIsOpen) {
    open({{appearance, {{"color-scheme", 0U}}}});
    ASSERT_TRUE(pageBecomes(lightPage));
    portal->change(appearance, "color-scheme", 1U);
    EXPECT_TRUE(pageBecomes(darkPage));
    portal->change(appearance, "color-scheme", 2U);
    EXPECT_TRUE(pageBecomes(lightPage));
}

TEST_F(TasteOfTheDesktop, forContrastIsFollowedWhileTheWindowIsOpen) {
    open({{appearance, {{"contrast", 0U}}}});
    ASSERT_TRUE(shows(switchOn));
    portal->change(appearance, "contrast", 1U);
    EXPECT_TRUE(shows(strongSwitchOn));
    portal->change(appearance, "contrast", 0U);
    EXPECT_TRUE(shows(switchOn));
}

TEST_F(TasteOfTheDesktop, forAnAccentIsFollowedWhileTheWindowIsOpen) {
    const QColor violet("#813d9c");
    const QColor brown("#865e3c");
    auto accent = [](const QColor& colour) {
        return DesktopPortal::accent(colour.redF(), colour.greenF(), colour.blueF());
    };
    open({{appearance, {{"accent-color", accent(violet)}}}});
    ASSERT_TRUE(pageBecomes(lightPage));
    // The frame of the focus is in the accent.
    display.press(VirtualDisplay::Down);
    ASSERT_TRUE(shows(violet.rgb()));
    portal->change(appearance, "accent-color", accent(brown));
    EXPECT_TRUE(shows(brown.rgb()));
    // Beyond its range, a colour is none.
    portal->change(appearance, "accent-color", DesktopPortal::accent(-1, -1, -1));
    EXPECT_TRUE(shows(qRgb(0x00, 0x69, 0xd9)));
}

TEST_F(TasteOfTheDesktop, forLargeTextIsFollowedWhileTheWindowIsOpen) {
    open({{gnome, {{"text-scaling-factor", 1.0}}}});
    ASSERT_TRUE(shows(switchOn));
    const int usual = firstSwitch();
    portal->change(gnome, "text-scaling-factor", 1.5);
    EXPECT_TRUE(waitFor([&] { return firstSwitch() > usual + 20; })) << "the head of the page has grown";
    portal->change(gnome, "text-scaling-factor", 1.0);
    EXPECT_TRUE(waitFor([&] { return firstSwitch() == usual; }));
}

TEST_F(TasteOfTheDesktop, givesWayToTheCommandLine) {
    open({{appearance, {{"color-scheme", 1U}, {"contrast", 1U}}}}, {"--appearance", "light", "--contrast", "normal"});
    ASSERT_TRUE(pageBecomes(lightPage));
    ASSERT_TRUE(shows(switchOn));
    const int usual = firstSwitch();
    // Once texts have grown, what the desktop said before that has been heard.
    portal->change(appearance, "color-scheme", 1U);
    portal->change(appearance, "contrast", 1U);
    portal->change(gnome, "text-scaling-factor", 1.5);
    ASSERT_TRUE(waitFor([&] { return firstSwitch() > usual + 20; }));
    EXPECT_TRUE(pageBecomes(lightPage));
    EXPECT_TRUE(shows(switchOn));
}

TEST_F(TasteOfTheDesktop, thatMakesNoSenseIsNone) {
    open({{appearance, {{"color-scheme", "dark"}, {"accent-color", "red"}, {"contrast", QStringList{"much"}}}},
          {gnome, {{"text-scaling-factor", -3.0}}}});
    EXPECT_TRUE(pageBecomes(lightPage));
    ASSERT_TRUE(waitFor([this] { return portal->wasAsked(); }));
    portal->change(appearance, "accent-color", 3);
    portal->change(appearance, "color-scheme", 1U);
    EXPECT_TRUE(pageBecomes(darkPage)) << "it listens on";
}

}  // namespace desktop_tests
