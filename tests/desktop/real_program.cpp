// SPDX-License-Identifier: MIT
#include "tests/desktop/real_program.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <filesystem>

namespace desktop_tests {

RealProgram::RealProgram() : phone(pathOf("phone")) {
    std::filesystem::copy(TRIVEL3_SAMPLE_PHONE, phone.toStdString(), std::filesystem::copy_options::recursive);
    std::filesystem::create_directories(folder.path() / "run");
    std::filesystem::permissions(folder.path() / "run", std::filesystem::perms::owner_all);
    environment = QProcessEnvironment::systemEnvironment();
    environment.insert("HOME", QString::fromStdString(folder.path()));
    environment.insert("XDG_RUNTIME_DIR", pathOf("run"));
    environment.insert("XDG_CONFIG_HOME", pathOf("config"));
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    environment.insert("QT_QUICK_BACKEND", "software");
    environment.insert("DBUS_SESSION_BUS_ADDRESS", QString::fromStdString(bus.address()));
    environment.remove("TRIVEL3_PHONE");
}

void RealProgram::start(QProcess& process, const QStringList& arguments) {
    process.setProcessEnvironment(environment);
    process.start(TRIVEL3_PROGRAM, arguments);
}

RealProgram::Result RealProgram::run(const QStringList& arguments) {
    QProcess process;
    start(process, arguments);
    EXPECT_TRUE(process.waitForFinished(patience));
    const Result result{process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
    const bool maySpeak = result.status != 0 || arguments.contains("--verbose");
    EXPECT_TRUE(maySpeak || result.errors.isEmpty()) << result.errors.toStdString();
    return result;
}

void RealProgram::end(QProcess& process) {
    process.terminate();
    ASSERT_TRUE(process.waitForFinished(patience));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 0);
    EXPECT_EQ(process.readAllStandardError().toStdString(), "");
}

QStringList RealProgram::namesOnBus() const {
    const QString us = QStringLiteral("test");
    const auto connection = QDBusConnection::connectToBus(QString::fromStdString(bus.address()), us);
    const QStringList names = connection.interface()->registeredServiceNames();
    QDBusConnection::disconnectFromBus(us);
    return names;
}

bool RealProgram::isListening() const {
    return !namesOnBus().filter("com.fenwary.trivel3.Settings.").isEmpty();
}

}  // namespace desktop_tests
