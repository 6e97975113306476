// SPDX-License-Identifier: MIT
#include "tests/desktop/noted_warnings.h"

#include <QStringList>
#include <QtGlobal>

namespace desktop_tests {
namespace {

QStringList& warnings() {
    static QStringList noted;
    return noted;
}

void note(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type != QtDebugMsg && type != QtInfoMsg) warnings().append(message);
}

}  // namespace

void NotedWarnings::install() {
    qInstallMessageHandler(note);
}

void NotedWarnings::OnTestStart(const testing::TestInfo&) {
    warnings().clear();
}

void NotedWarnings::OnTestEnd(const testing::TestInfo&) {
    EXPECT_TRUE(warnings().isEmpty()) << warnings().join(u'\n').toStdString();
}

}  // namespace desktop_tests
