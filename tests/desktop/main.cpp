// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QAccessible>
#include <QGuiApplication>
#include <QStandardPaths>

#include "hosts/desktop/drawing/qt_values.h"
#include "tests/desktop/noted_warnings.h"

int main(int argumentCount, char** arguments) {
    testing::InitGoogleTest(&argumentCount, arguments);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    QStandardPaths::setTestModeEnabled(true);
    QGuiApplication application(argumentCount, arguments);
    QGuiApplication::setFont(hosts::desktop::systemFont(17));
    QAccessible::setActive(true);
    testing::UnitTest::GetInstance()->listeners().Append(new desktop_tests::NotedWarnings);
    desktop_tests::NotedWarnings::install();
    return RUN_ALL_TESTS();
}
