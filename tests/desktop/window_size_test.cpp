// SPDX-License-Identifier: MIT
#include "hosts/desktop/program/window_size.h"

#include <QTest>

#include "tests/desktop/patches.h"
#include "tests/desktop/real_program.h"
#include "tests/desktop/virtual_display.h"

namespace desktop_tests {

using hosts::desktop::startingSize;

TEST(StartingSize, isAsWideAsThePhoneAndAsHighAsTheScreenHasRoomFor) {
    const auto& phone = hosts::usualDeviceShape();
    EXPECT_EQ(startingSize(phone, {}, {1366, 728}).width(), 320);
    const int height = startingSize(phone, {}, {1366, 728}).height();
    EXPECT_LT(height, 728) << "less the frame";
    EXPECT_GT(height, 660);
}

TEST(StartingSize, isNoHigherThanAPageIsEasilyRead) {
    EXPECT_EQ(startingSize(hosts::usualDeviceShape(), {}, {3840, 2120}), QSize(320, 1000));
    EXPECT_EQ(startingSize(*hosts::findDeviceShape("tablet"), {}, {3840, 2120}), QSize(768, 1000));
}

TEST(StartingSize, isWhatItWasWhileThatFits) {
    const auto& phone = hosts::usualDeviceShape();
    EXPECT_EQ(startingSize(phone, {1200, 640}, {1366, 728}), QSize(1200, 640));
    EXPECT_EQ(startingSize(phone, {1200, 640}, {1024, 728}), startingSize(phone, {}, {1024, 728}));
    EXPECT_EQ(startingSize(phone, {400, 1000}, {1366, 728}), startingSize(phone, {}, {1366, 728}));
}

TEST(StartingSize, isNeverLargerThanTheScreenNorTooSmallToUse) {
    EXPECT_EQ(startingSize(*hosts::findDeviceShape("tablet"), {}, {640, 480}).width(), 640);
    EXPECT_EQ(startingSize(hosts::usualDeviceShape(), {}, {200, 100}), hosts::desktop::smallestWindow);
}

/// The real program in a window of a real display.
class WindowOnADisplay : public RealProgram {
protected:
    static constexpr QRgb switchOn = qRgb(0x21, 0x94, 0x40);

    void startDisplay(const char* screen = VirtualDisplay::usualScreen) {
        ASSERT_TRUE(display.start(screen)) << "no display could be started";
        environment["DISPLAY"] = display.name().toStdString();
        environment["QT_QPA_PLATFORM"] = "xcb";
    }
    void TearDown() override {
        if (program && !program->hasEnded()) end(*program);
    }
    void open(const QStringList& options = {}) {
        program.emplace(command(QStringList{"--phone", phone, "--appearance", "light"} + options), environment);
        ASSERT_TRUE(waitFor([this] { return !display.window().isEmpty() || program->hasEnded(); }));
        ASSERT_FALSE(program->hasEnded()) << program->finish().errors;
        display.focusWindow();
    }
    bool isDrawn() {
        return waitFor([this] { return patches(display.picture(), switchOn).size() == 3; });
    }
    static bool waitFor(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, patience); }

    VirtualDisplay display;
    std::optional<kit::ChildProcess> program;
};

TEST_F(WindowOnADisplay, isAsHighAsThereIsRoomAtFirst) {
    startDisplay();
    open();
    EXPECT_EQ(display.window().width(), 320);
    EXPECT_GT(display.window().height(), 800);
    EXPECT_LT(display.window().height(), 900);
}

TEST_F(WindowOnADisplay, isAsItWasLeftWhileThatFits) {
    startDisplay();
    open({"--size", "500x420"});
    ASSERT_TRUE(waitFor([this] { return display.window().size() == QSize(500, 420); }));
    end(*program);
    program.reset();
    open();
    EXPECT_TRUE(waitFor([this] { return display.window().size() == QSize(500, 420); }));
}

TEST_F(WindowOnADisplay, hasTwoColumnsThatAreUsedByTheMouse) {
    startDisplay("1300x900x24");
    open({"--size", "1200x800"});
    ASSERT_TRUE(isDrawn());
    const QRect links = extent(display.picture(), switchOn);
    ASSERT_LT(links.right(), display.window().left() + 360) << "they are in the left column";
    const QRect right(display.window().topLeft() + QPoint(380, 60), QSize(800, 700));
    // Below the last switch, and its footer, is the row that leads to the options.
    const QPoint options(display.window().left() + 150, links.bottom() + 110);
    const auto switchesAtRight = [&] { return patches(display.picture().copy(right), switchOn).size(); };
    ASSERT_EQ(switchesAtRight(), 0U);
    ASSERT_TRUE(waitFor([&] {
        display.click(options);
        return switchesAtRight() > 0;
    }));
    EXPECT_EQ(extent(display.picture(), switchOn).left(), links.left()) << "the first page is still there";
}

TEST_F(WindowOnADisplay, isSharpAndWholeAtEveryScale) {
    for (const auto& [scale, screen] : {std::pair{"1", "1300x900x24"},
                                        {"1.5", "1300x900x24"},
                                        {"2", "1300x900x24"},
                                        {"3", "1300x900x24"},
                                        {"2", "3840x2160x24"}}) {
        VirtualDisplay own;
        ASSERT_TRUE(own.start(screen));
        environment["DISPLAY"] = own.name().toStdString();
        environment["QT_QPA_PLATFORM"] = "xcb";
        environment["QT_SCALE_FACTOR"] = scale;
        program.emplace(command({"--phone", phone, "--appearance", "light"}), environment);
        ASSERT_TRUE(waitFor([&] { return !patches(own.picture(), switchOn).empty(); })) << scale;
        const QRect window = own.window();
        EXPECT_TRUE(QRect(QPoint(), own.picture().size()).contains(QRect(QPoint(), window.size()))) << scale;
        EXPECT_EQ(window.width(), qRound(320 * QString(scale).toDouble())) << scale;
        const QRect first = patches(own.picture(), switchOn).front();
        EXPECT_NEAR(first.width(), 51 * QString(scale).toDouble(), 2) << scale;
        end(*program);
        program.reset();
    }
}

TEST_F(WindowOnADisplay, refusesASizeThatIsNone) {
    for (const char* size : {"wide", "1200", "1200x", "x800", "100x100", "9000x800", "-1200x800", "1200x800x2"}) {
        const Result result = run({"--phone", phone, "--size", size});
        EXPECT_EQ(result.status, 2) << size;
        EXPECT_EQ(result.errors.count('\n'), 1) << result.errors.toStdString();
    }
}

}  // namespace desktop_tests
