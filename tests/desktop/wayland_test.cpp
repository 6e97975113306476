// SPDX-License-Identifier: MIT
#include <signal.h>

#include <QDir>
#include <QLibraryInfo>
#include <QTest>
#include <fstream>

#include "hosts/desktop/program/window_memory.h"
#include "tests/desktop/desktop_portal.h"
#include "tests/desktop/patches.h"
#include "tests/desktop/real_program.h"
#include "tests/desktop/virtual_compositor.h"
#include "tests/kit/private_mounts.h"

namespace desktop_tests {
namespace {

constexpr const char* schemeGroup = "org.freedesktop.appearance";

QString pluginFolder() {
    return QLibraryInfo::path(QLibraryInfo::PluginsPath) + "/platforms";
}

}  // namespace

/// The real program where Wayland is all that there is.
class Wayland : public RealProgram {
protected:
    void SetUp() override {
        environment.erase("QT_QPA_PLATFORM");
        environment.erase("DISPLAY");
        environment["WAYLAND_DISPLAY"] = VirtualCompositor::name;
    }

    void TearDown() override {
        if (HasFailure() && !display.name().isEmpty()) {
            QDir().mkpath(TEST_PICTURES);
            const auto* test = testing::UnitTest::GetInstance()->current_test_info();
            display.picture().save(QString(TEST_PICTURES "/wayland-%1.png").arg(test->name()));
        }
        if (program && !program->hasEnded()) {
            program->signal(SIGTERM);
            EXPECT_EQ(program->finish().status, 0);
        }
    }

    std::string runtimeFolder() const { return folder / "run"; }

    void startDesktop(const char* screen = VirtualDisplay::usualScreen, QSize size = VirtualCompositor::usualSize) {
        if (!VirtualCompositor::isInstalled()) GTEST_SKIP() << "there is no weston on this machine";
        ASSERT_TRUE(display.start(screen)) << "no display could be started";
        if (!compositor.startOn(display, runtimeFolder(), size)) GTEST_SKIP() << "weston does not run on this machine";
        const bool isPainted = waitFor([this] { return display.pixel({400, 40}) == VirtualCompositor::background; });
        ASSERT_TRUE(isPainted) << "the desktop does not come";
        // Before there is a window: one that appears gets the keyboard when the desktop has it.
        display.focusWindow();
    }

    // Clicks beside the window's title until a key is seen to do something.
    bool takesTheKeyboard() {
        const QRect frame = extent(display.picture(), qRgb(0xf8, 0xf8, 0xf8));
        const QImage unfocused = display.picture();
        return waitFor([&] {
            display.click(frame.topLeft() + QPoint(40, 8));
            display.press(VirtualDisplay::Down);
            return display.picture() != unfocused;
        });
    }

    void start(const QStringList& options = {}) {
        program.emplace(command(QStringList{"--phone", phone} + options), environment);
    }

    static bool waitFor(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, patience); }

    // The frame has the colour of the bar, and is all around the window.
    bool frameBecomes(QRgb colour) {
        return waitFor([&] {
            const QRect frame = extent(display.picture(), colour);
            return frame.width() > windowSize.width() && frame.height() > windowSize.height();
        });
    }

    const QSize windowSize{320, 568};
    VirtualDisplay display;
    VirtualCompositor compositor;
    std::optional<kit::ChildProcess> program;
};

TEST_F(Wayland, frameIsOfTheWindowsColour) {
    startDesktop();
    if (IsSkipped()) return;
    start({"--appearance", "dark"});
    EXPECT_TRUE(frameBecomes(qRgb(0x16, 0x16, 0x18)));
    end(*program);
    start({"--appearance", "light"});
    EXPECT_TRUE(frameBecomes(qRgb(0xf8, 0xf8, 0xf8)));
}

TEST_F(Wayland, frameFollowsTheDesktopsTaste) {
    startDesktop();
    if (IsSkipped()) return;
    DesktopPortal portal(bus.address(), {{schemeGroup, {{"color-scheme", 0U}}}});
    start();
    ASSERT_TRUE(frameBecomes(qRgb(0xf8, 0xf8, 0xf8)));
    portal.change(schemeGroup, "color-scheme", 1U);
    EXPECT_TRUE(frameBecomes(qRgb(0x16, 0x16, 0x18)));
    portal.change(schemeGroup, "color-scheme", 0U);
    EXPECT_TRUE(frameBecomes(qRgb(0xf8, 0xf8, 0xf8)));
}

TEST_F(Wayland, errorIsADialogThatAKeyCloses) {
    startDesktop();
    if (IsSkipped()) return;
    start({"--page", "Nowhere"});
    ASSERT_TRUE(waitFor([this] { return !extent(display.picture(), qRgb(0xef, 0xef, 0xf4)).isEmpty(); }));
    EXPECT_FALSE(program->hasEnded());
    const QPoint onItsText = extent(display.picture(), qRgb(0xef, 0xef, 0xf4)).center();
    // A key may come before the compositor has given the window the keyboard, which it does when it is clicked.
    EXPECT_TRUE(waitFor([this, onItsText] {
        display.click(onItsText);
        display.press(VirtualDisplay::Escape);
        return program->hasEnded();
    }));
    const kit::Outcome outcome = program->finish();
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find("leads to no page 'Nowhere'"), std::string::npos) << outcome.errors;
}

TEST_F(Wayland, letterFindsAndEnterGoesThere) {
    startDesktop();
    if (IsSkipped()) return;
    start({"--appearance", "light"});
    constexpr QRgb on = qRgb(0x21, 0x94, 0x40);
    ASSERT_TRUE(waitFor([this] { return !extent(display.picture(), on).isEmpty(); }));
    ASSERT_TRUE(takesTheKeyboard());
    display.type("hud");
    ASSERT_TRUE(waitFor([this] { return extent(display.picture(), on).isEmpty(); })) << "it lies over the page";
    display.press(VirtualDisplay::Return);
    display.press(VirtualDisplay::Space);
    EXPECT_TRUE(waitFor([this] { return !extent(display.picture(), on).isEmpty(); })) << "the one switch there is on";
}

TEST_F(Wayland, windowAndItsFrameFitTheScreenAtFirst) {
    startDesktop();
    if (IsSkipped()) return;
    start({"--appearance", "light"});
    constexpr QRgb bar = qRgb(0xf8, 0xf8, 0xf8);
    constexpr QRgb page = qRgb(0xef, 0xef, 0xf4);
    QRect frame;
    QRect ground;
    EXPECT_TRUE(waitFor([&] {
        frame = extent(display.picture(), bar);
        ground = extent(display.picture(), page);
        return ground.height() > windowSize.height() && frame.bottom() > ground.bottom();
    })) << "the frame's lower edge, from "
        << frame.top() << " to " << frame.bottom();
    EXPECT_LT(frame.height(), VirtualCompositor::usualSize.height());
}

TEST_F(Wayland, wideWindowHasTwoColumns) {
    startDesktop("1300x900x24", {1260, 880});
    if (IsSkipped()) return;
    start({"--appearance", "light", "--size", "1200x800", "--page", "Advanced Options"});
    constexpr QRgb on = qRgb(0x21, 0x94, 0x40);
    // The first rows of the options have switches that are on, too.
    EXPECT_TRUE(waitFor([&] { return extent(display.picture(), on).width() > 500; })) << "switches in both columns";
}

TEST_F(Wayland, menuOpensByAKeyAndOffersWhatItsLettersSay) {
    startDesktop();
    if (IsSkipped()) return;
    start({"--appearance", "light"});
    constexpr QRgb on = qRgb(0x21, 0x94, 0x40);
    ASSERT_TRUE(waitFor([this] { return !extent(display.picture(), on).isEmpty(); }));
    ASSERT_TRUE(takesTheKeyboard());
    display.press(VirtualDisplay::F10);
    display.type("k");
    EXPECT_TRUE(waitFor([this] { return extent(display.picture(), on).isEmpty(); })) << "the keys lie over the page";
    display.press(VirtualDisplay::Escape);
    EXPECT_TRUE(waitFor([this] { return !extent(display.picture(), on).isEmpty(); }));
}

TEST_F(Wayland, everyPageIsDrawnWhereThereIsNoSeat) {
    if (!VirtualCompositor::isInstalled()) GTEST_SKIP() << "there is no weston on this machine";
    if (!compositor.startWithoutSeat(runtimeFolder())) GTEST_SKIP() << "weston does not run on this machine";
    // Of what goes between program and desktop, the picture is what matters.
    environment["WAYLAND_DEBUG"] = "1";
    const QString key = hosts::desktop::folderKey(phone.toStdString());
    const std::vector<QString> paths = {"", "The Creators", "Advanced Options", "Advanced Options, Slider Actions",
                                        "Advanced Options, Disable in Applications"};
    for (const QString& path : paths) {
        std::filesystem::create_directories(folder.path() / "config/trivel3");
        std::ofstream(folder.path() / "config/trivel3/trivel3-settings.ini")
            << '[' << key.toStdString() << "]\npath=" << path.toStdString() << '\n';
        start();
        bool isDrawn = false;
        while (const auto line = program->readErrorLine()) {
            isDrawn = line->find("attach(wl_buffer") != std::string::npos;
            if (isDrawn) break;
        }
        EXPECT_TRUE(isDrawn) << path.toStdString();
        program->signal(SIGTERM);
        EXPECT_EQ(program->finish().status, 0) << path.toStdString();
    }
}

TEST_F(Wayland, missingPluginIsNamedInOneLine) {
    if (!kit::mayMount()) GTEST_SKIP() << kit::noMounts;
    // What Qt finds in an empty folder is nothing.
    const std::string hidden = "mount -t tmpfs none \"$1\" && shift && exec \"$@\"";
    std::vector<std::string> words{
        "/usr/bin/unshare",          "--user", "--map-root-user", "--mount", "/bin/sh", "-c", hidden, "sh",
        pluginFolder().toStdString()};
    for (const std::string& word : command({"--phone", phone}))
        words.push_back(word);
    const kit::Outcome outcome = kit::ChildProcess(words, environment).finish();
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(kit::linesOf(outcome.errors).size(), 1U) << outcome.errors;
    EXPECT_NE(outcome.errors.find("qt6-wayland"), std::string::npos) << outcome.errors;
}

TEST_F(Wayland, displayThatCannotBeReachedIsNamedInOneLine) {
    environment["WAYLAND_DISPLAY"] = "not-there";
    const kit::Outcome outcome = kit::ChildProcess(command({"--phone", phone}), environment).finish();
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(kit::linesOf(outcome.errors).size(), 1U) << outcome.errors;
    EXPECT_NE(outcome.errors.find("WAYLAND_DISPLAY=not-there"), std::string::npos) << outcome.errors;
}

TEST_F(Wayland, missingDisplayIsToldInOneLine) {
    environment.erase("WAYLAND_DISPLAY");
    const kit::Outcome outcome = kit::ChildProcess(command({"--phone", phone}), environment).finish();
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(
        outcome.errors,
        "trivel3-settings: there is no display to open a window on: neither WAYLAND_DISPLAY nor DISPLAY is set\n");
}

}  // namespace desktop_tests
