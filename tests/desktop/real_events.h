// SPDX-License-Identifier: MIT
#pragma once

#include <QDir>
#include <QFile>
#include <QTest>
#include <functional>
#include <iostream>
#include <optional>

#include "tests/desktop/patches.h"
#include "tests/desktop/real_program.h"
#include "tests/desktop/settings_text.h"
#include "tests/desktop/virtual_display.h"

namespace desktop_tests {

using Display = VirtualDisplay;

// The switches that are on, from top to bottom: they have the one colour that nothing else has.
inline std::vector<QRect> switchesOn(const QImage& picture) {
    return patches(picture, qRgb(0x21, 0x94, 0x40));
}

/// The real program in a window of a real display, used with mouse and keys. Nobody but what is seen
/// and what lies in the file tells the tests what has come of it.
class RealEvents : public RealProgram {
protected:
    static constexpr std::size_t onAtFirst = 3;

    void SetUp() override {
        ASSERT_TRUE(display.start()) << "no display could be started";
        environment["DISPLAY"] = display.name().toStdString();
        environment["QT_QPA_PLATFORM"] = "xcb";
    }

    void TearDown() override {
        if (HasFailure()) keepPicture();
        if (program && !program->hasEnded()) end(*program);
    }

    // Opens the window and waits until it shows so many switches that are on.
    void open(std::size_t expected = onAtFirst, const QStringList& options = {}) {
        start(options);
        waitForWindow();
        ASSERT_TRUE(showsSwitchesOn(expected)) << switchesOn(display.picture()).size() << " are on";
    }

    void start(const QStringList& options = {}) {
        program.emplace(command(QStringList{"--phone", phone, "--appearance", "light"} + options), environment);
    }

    void waitForWindow() {
        const auto hasEnded = [this] { return program->hasEnded(); };
        ASSERT_TRUE(waitFor([&] { return !display.window().isEmpty() || hasEnded(); })) << "no window has come";
        ASSERT_FALSE(hasEnded()) << program->finish().errors;
        display.focusWindow();
    }

    static bool waitFor(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, patience); }

    bool showsSwitchesOn(std::size_t count) {
        return waitFor([this, count] { return switchesOn(display.picture()).size() == count; });
    }

    QByteArray settings() {
        QFile file(phone + "/var/mobile/Library/Preferences/com.fenwary.trivel3.plist");
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    // What a program says in a dialog, and then, with this status, on standard error.
    QString messageOf(const QStringList& arguments, int status = 1) {
        const QRect before = display.window();
        kit::ChildProcess failing(command(arguments), environment);
        const bool isShown =
            waitFor([&] { return (!display.window().isEmpty() && display.window() != before) || failing.hasEnded(); });
        EXPECT_TRUE(isShown && !failing.hasEnded()) << "there is no dialog";
        display.focusWindow();
        display.press(Display::Escape);
        const kit::Outcome outcome = failing.finish();
        EXPECT_EQ(outcome.status, status);
        EXPECT_EQ(kit::linesOf(outcome.errors).size(), 1U) << outcome.errors;
        return QString::fromStdString(outcome.errors);
    }

    bool settingBecomes(const char* key, const char* element) {
        return waitFor([&] { return holdsSetting(settings().toStdString(), key, element); });
    }

    // With the pane's own keys: three rows below the first lies the link to the options. The first key may do no more
    // than show where the focus is.
    void openOptions() {
        display.press(Display::Home);
        display.press(Display::Home);
        for (int i = 0; i < 3; ++i)
            display.press(Display::Down);
        display.press(Display::Return);
        ASSERT_TRUE(waitFor([this] { return switchesOn(display.picture()).size() != onAtFirst; }));
    }

    VirtualDisplay display;
    std::optional<kit::ChildProcess> program;

private:
    void keepPicture() {
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        QDir().mkpath(TEST_PICTURES);
        const QString file = QString(TEST_PICTURES "/%1.png").arg(test->name());
        if (display.picture().save(file)) std::cerr << "What was seen: " << file.toStdString() << std::endl;
    }
};

}  // namespace desktop_tests
