// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QAccessible>
#include <QGuiApplication>
#include <QStandardPaths>
#include <QStringList>
#include <memory>

#include "hosts/desktop/accessible/accessible_tree.h"
#include "hosts/desktop/drawing/qt_values.h"

namespace {

QStringList warnings;

void note(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type != QtDebugMsg && type != QtInfoMsg) warnings.append(message);
}

/// Makes a test fail in which Qt, or QML, has warned of anything.
class NotedWarnings : public testing::EmptyTestEventListener {
public:
    void OnTestStart(const testing::TestInfo&) override { warnings.clear(); }
    void OnTestEnd(const testing::TestInfo&) override {
        EXPECT_TRUE(warnings.isEmpty()) << warnings.join(u'\n').toStdString();
    }
};

}  // namespace

int main(int argumentCount, char** arguments) {
    testing::InitGoogleTest(&argumentCount, arguments);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    QStandardPaths::setTestModeEnabled(true);
    QGuiApplication application(argumentCount, arguments);
    QGuiApplication::setFont(hosts::desktop::systemFont(17));
    QAccessible::setActive(true);
    hosts::desktop::installAccessibleTree();
    testing::UnitTest::GetInstance()->listeners().Append(std::make_unique<NotedWarnings>().release());
    qInstallMessageHandler(note);
    return RUN_ALL_TESTS();
}
