// SPDX-License-Identifier: MIT
// Measures a window and prints the figures on one line:
//     window_meter first-frame PROGRAM ARGUMENTS…   nanoseconds by the clock, of work; bytes of memory
//     window_meter tap PHONE      nanoseconds: median by the clock, 99th percentile of the work
//     window_meter scroll PHONE   nanoseconds: median and 99th percentile of the work
// The work is processor time: on a machine that does other things too, the clock's 99th percentile
// says how long those took.
#include <QGuiApplication>
#include <QMouseEvent>
#include <QQuickItem>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <vector>

#include "benchmarks/window/first_frame.h"
#include "benchmarks/window/metered_window.h"
#include "hosts/desktop/drawing/qt_values.h"

namespace benchmarks {
namespace {

constexpr int taps = 200;
constexpr int frames = 2000;
/// Points in a frame: a quick flick of the finger.
constexpr double scrolled = 60;
/// The switch of the first page's first row.
constexpr QPointF firstSwitch(280, 215);

double processorTime() {
    timespec time;
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
}

double wallClock() {
    return static_cast<double>(std::chrono::steady_clock::now().time_since_epoch().count());
}

double percentile(std::vector<double> times, std::size_t percent) {
    std::ranges::sort(times);
    return times[times.size() * percent / 100];
}

int print(double first, double second) {
    std::printf("%.0f %.0f\n", first, second);
    return 0;
}

void click(QQuickView& view, QPointF at) {
    const QPointF global = view.mapToGlobal(at);
    QMouseEvent press(QEvent::MouseButtonPress, at, global, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&view, &press);
    QMouseEvent release(QEvent::MouseButtonRelease, at, global, Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&view, &release);
}

bool isFirstSwitchOn(MeteredWindow& window) {
    auto& table = window.table();
    return table.data(table.index(table.rowBeside(-1, 1)), hosts::desktop::TableModel::OnRole).toBool();
}

int meterTaps(const std::string& phone) {
    MeteredWindow window(phone);
    if (!window.open({})) return 1;
    std::vector<double> times;
    std::vector<double> work;
    for (int i = 0; i < taps; ++i) {
        const bool wasOn = isFirstSwitchOn(window);
        const double before = wallClock();
        const double workBefore = processorTime();
        window.drawAfter([&] { click(window.view(), firstSwitch); });
        work.push_back(processorTime() - workBefore);
        times.push_back(wallClock() - before);
        if (isFirstSwitchOn(window) == wasOn) return 1;
    }
    return print(percentile(std::move(times), 50), percentile(std::move(work), 99));
}

int meterScrolling(const std::string& phone) {
    MeteredWindow window(phone);
    if (!window.open({QStringLiteral("Advanced Options"), QStringLiteral("Close All Apps")})) return 1;
    QQuickItem* list = window.list();
    std::vector<double> work;
    for (int i = 1; i <= frames; ++i) {
        const double before = processorTime();
        window.drawAfter([&] { list->setProperty("contentY", i * scrolled); });
        work.push_back(processorTime() - before);
    }
    return print(percentile(work, 50), percentile(work, 99));
}

int run(int argumentCount, char** arguments) {
    const QString job = QString::fromLocal8Bit(argumentCount > 2 ? arguments[1] : "");
    if (job == QLatin1String("first-frame")) {
        QCoreApplication application(argumentCount, arguments);
        return meterFirstFrame(QCoreApplication::arguments().mid(2));
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    QGuiApplication application(argumentCount, arguments);
    QGuiApplication::setFont(hosts::desktop::systemFont(17));
    if (job == QLatin1String("tap")) return meterTaps(arguments[2]);
    if (job == QLatin1String("scroll")) return meterScrolling(arguments[2]);
    return 2;
}

}  // namespace
}  // namespace benchmarks

int main(int argumentCount, char** arguments) {
    return benchmarks::run(argumentCount, arguments);
}
