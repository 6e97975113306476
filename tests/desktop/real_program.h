// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <QString>
#include <QStringList>

#include "tests/kit/child_process.h"
#include "tests/kit/private_bus.h"
#include "tests/kit/temporary_folder.h"

namespace desktop_tests {

/// The real program, with a home and a phone of its own.
class RealProgram : public testing::Test {
protected:
    static constexpr int patience = 60000;  // ms

    RealProgram();

    struct Result {
        int status;
        QString output;
        QString errors;
    };

    /// The command line for what runs in `environment`.
    static std::vector<std::string> command(const QStringList& arguments);
    /// Runs the program to its end. One that has done what was asked must have complained of nothing,
    /// unless it was to be verbose.
    Result run(const QStringList& arguments);
    /// Asks the program to end, and expects it to do so in good order and to have complained of nothing.
    static void end(kit::ChildProcess& process);

    /// Everybody who is on the session bus, by all their names.
    QStringList namesOnBus() const;
    /// Whether a window answers for the phone.
    bool isListening() const;

    QString pathOf(const char* name) const { return QString::fromStdString(folder.path() / name); }

    kit::TemporaryFolder folder;
    kit::PrivateBus bus;
    QString phone;
    kit::Environment environment = kit::ownEnvironment();
};

}  // namespace desktop_tests
