// SPDX-License-Identifier: MIT
#include "benchmarks/window/first_frame.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>
#include <QThread>
#include <cstdio>

#include "tests/desktop/virtual_display.h"

namespace benchmarks {
namespace {

constexpr int patience = 60000;           // ms
constexpr unsigned long lookEvery = 200;  // us
/// In the lower half of the window, wherever it is: both windows are light there.
constexpr QPoint place(160, 500);

// Nothing of the user's own counts, and nothing is left behind.
QProcessEnvironment environment(const QString& display, const QString& home) {
    QProcessEnvironment all = QProcessEnvironment::systemEnvironment();
    all.insert(QStringLiteral("DISPLAY"), display);
    all.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    for (const char* folder : {"XDG_RUNTIME_DIR", "XDG_CONFIG_HOME"})
        all.insert(QString::fromLatin1(folder), home);
    all.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("unix:path=") + home + QStringLiteral("/no"));
    return all;
}

double residentBytes(qint64 process) {
    QFile status(QStringLiteral("/proc/%1/status").arg(process));
    if (!status.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:")) return line.mid(6).trimmed().split(' ').constFirst().toDouble() * 1024;
    }
    return 0;
}

// Of all threads: the clock also counts what other programs do meanwhile.
double processorTime(qint64 process) {
    double sum = 0;
    const QDir threads(QStringLiteral("/proc/%1/task").arg(process));
    for (const QString& thread : threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile statistics(threads.filePath(thread + QStringLiteral("/schedstat")));
        if (statistics.open(QIODevice::ReadOnly)) sum += statistics.readAll().split(' ').constFirst().toDouble();
    }
    return sum;
}

}  // namespace

int meterFirstFrame(const QStringList& command) {
    desktop_tests::VirtualDisplay display;
    QTemporaryDir home;
    if (!display.start() || !home.isValid() || command.isEmpty()) return 1;
    QProcess program;
    program.setProcessEnvironment(environment(display.name(), home.path()));
    QElapsedTimer timer;
    timer.start();
    program.start(command.first(), command.mid(1));
    while (qGray(display.pixel(place)) == 0) {
        if (timer.hasExpired(patience)) return 1;
        QThread::usleep(lookEvery);
    }
    const auto elapsed = static_cast<double>(timer.nsecsElapsed());
    const qint64 process = program.processId();
    std::printf("%.0f %.0f %.0f\n", elapsed, processorTime(process), residentBytes(process));
    program.terminate();
    return program.waitForFinished(patience) ? 0 : 1;
}

}  // namespace benchmarks
