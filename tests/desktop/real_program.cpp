// SPDX-License-Identifier: MIT
#include "tests/desktop/real_program.h"

#include <signal.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <filesystem>

namespace desktop_tests {

RealProgram::RealProgram() : phone(pathOf("phone")) {
    std::filesystem::copy(TRIVEL3_SAMPLE_PHONE, phone.toStdString(), std::filesystem::copy_options::recursive);
    std::filesystem::create_directories(folder.path() / "run");
    std::filesystem::permissions(folder.path() / "run", std::filesystem::perms::owner_all);
    environment["HOME"] = folder.path();
    environment["XDG_RUNTIME_DIR"] = folder / "run";
    environment["XDG_CONFIG_HOME"] = folder / "config";
    environment["XDG_STATE_HOME"] = folder / "state";
    environment["QT_QPA_PLATFORM"] = "offscreen";
    environment["QT_QUICK_BACKEND"] = "software";
    environment["DBUS_SESSION_BUS_ADDRESS"] = bus.address();
    environment.erase("TRIVEL3_PHONE");
    // A window that is ended from outside leaves what Qt's thread for the bus has not delivered by then, and Wayland's
    // plug-in what it holds for the display. Where a program comes to its own end, all that it leaves is told.
    environment["ASAN_OPTIONS"] += ":detect_leaks=0";
}

std::vector<std::string> RealProgram::command(const QStringList& arguments) {
    std::vector<std::string> words{TRIVEL3_PROGRAM};
    for (const QString& argument : arguments)
        words.push_back(argument.toStdString());
    return words;
}

RealProgram::Result RealProgram::run(const QStringList& arguments) {
    kit::Environment telling = environment;
    telling["ASAN_OPTIONS"] += ":detect_leaks=1";
    const kit::Outcome outcome = kit::ChildProcess(command(arguments), telling).finish();
    const Result result{outcome.status, QString::fromStdString(outcome.output), QString::fromStdString(outcome.errors)};
    const bool maySpeak = result.status != 0 || arguments.contains("--verbose");
    EXPECT_TRUE(maySpeak || result.errors.isEmpty()) << outcome.errors;
    return result;
}

void RealProgram::end(kit::ChildProcess& process) {
    process.signal(SIGTERM);
    const kit::Outcome outcome = process.finish();
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "");
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
