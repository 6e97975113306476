// SPDX-License-Identifier: MIT
#include "hosts/desktop/program/program.h"

#include <QAbstractEventDispatcher>
#include <QGuiApplication>
#include <QIcon>
#include <QScreen>
#include <QSocketNotifier>
#include <QTimer>
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "hosts/desktop/program/desktop_session.h"
#include "hosts/desktop/program/desktop_taste.h"
#include "hosts/desktop/program/display_opening.h"
#include "hosts/desktop/program/link_opener.h"
#include "hosts/desktop/program/message_window.h"
#include "hosts/desktop/program/options.h"
#include "hosts/desktop/program/phone_opener.h"
#include "hosts/desktop/program/screenshots.h"
#include "hosts/desktop/program/single_instance.h"
#include "hosts/desktop/program/waiting_window.h"
#include "hosts/desktop/program/window_memory.h"
#include "hosts/desktop/program/window_size.h"
#include "hosts/session/exit_status.h"
#include "hosts/session/printable.h"
#include "hosts/session/program_entry.h"
#include "hosts/system/arriving_signals.h"

namespace hosts::desktop {
namespace {

// The library's event loop is not made to be left by an exception.
class Application : public QGuiApplication {
public:
    using QGuiApplication::QGuiApplication;

    bool notify(QObject* receiver, QEvent* event) override {
        try {
            return QGuiApplication::notify(receiver, event);
        } catch (...) {
            std::_Exit(failForException());
        }
    }
};

// Of support reports, windows remember one place for all of them: none is opened twice for long.
const QString reportsKey = QStringLiteral("reports");

// A report that came by standard input is another one each time.
QString keyOf(OpenedPhone& phone) {
    const std::string& place = phone.phone->identity().place;
    const bool isFromInput = phone.isReport && !namesReport(place);
    return isFromInput ? QStringLiteral("input") + QString::number(QCoreApplication::applicationPid())
                       : folderKey(place);
}

int runScreenshots(OpenedPhone& phone, const Options& options) {
    const auto taken = takeScreenshots(phone, options);
    return taken ? done : fail(failed, taken.error());
}

// The device's own scale, or the screen's where that is finer: pictures are picked by it.
DeviceShape shapeForScreen(const DeviceShape& device) {
    DeviceShape shape = device;
    shape.screen.scale = std::max(shape.screen.scale, std::ceil(qGuiApp->devicePixelRatio()));
    return shape;
}

QSize sizeToOpenIn(const Options& options, const DeviceShape& device, const WindowMemory& memory) {
    const QScreen* screen = QGuiApplication::primaryScreen();
    const QSize room = screen ? screen->availableSize() : screenSize(device);
    return options.size ? options.size->boundedTo(room) : startingSize(device, memory.size(), room);
}

void followTaste(SettingsWindow& window, DesktopTaste& desktop, const Options& options) {
    auto apply = [&window, &desktop, options] { window.setTaste(options.over(desktop.taste())); };
    desktop.takeAnswer();
    apply();
    QObject::connect(&desktop, &DesktopTaste::changed, &window, apply);
}

void comeForward(QQuickView& view, const QByteArray& token) {
    if (!token.isEmpty()) qputenv("XDG_ACTIVATION_TOKEN", token);
    view.show();
    view.raise();
    view.requestActivate();
}

// What was asked of a window that is open already, and came to nothing, must not go unnoticed.
int leaveToOpenWindow(const Options& options, const QString& problem) {
    if (!problem.isEmpty()) return failBeforeUser(failed, problem.toStdString());
    const bool wantsAnother = options.device != &usualDeviceShape() || options.asksForTaste() || options.size ||
                              !options.deviceInformation.empty() || options.verbose;
    if (!wantsAnother) return done;
    return failBeforeUser(
        failed,
        "this phone's window is open already, and has come to the front as it is; close it first, for other "
        "options than --phone to count");
}

platform::Result<platform::Done> openFirstPage(Navigation& navigation, const Options& options,
                                               const WindowMemory& memory) {
    if (!options.page.empty()) return navigation.openPath(options.page);
    navigation.follow(memory.path());
    return platform::Done();
}

// For another program, which tells its user.
QString openPageInWindow(Navigation& navigation, const QString& titles) {
    if (navigation.isComposerShown()) return QStringLiteral("the window is busy with an e-mail or a post");
    navigation.find().close();
    const auto opened = navigation.openPath(titles.toStdString());
    return opened ? QString() : QString::fromStdString(opened.error().text());
}

std::vector<std::string> openFurther(PhoneOpener& opener, const Options& options) {
    std::vector<std::string> problems;
    for (const std::string& folder : options.further) {
        const auto opened = opener.open(QString::fromStdString(folder));
        if (!opened) problems.push_back(opened.error().text());
    }
    return problems;
}

void offerPhones(Navigation& navigation) {
    navigation.tell({.about = Banner::About::sample,
                     .text = QStringLiteral("This is the sample phone: no device is affected."),
                     .action = QStringLiteral("Open Phone…"),
                     .act = [&navigation] { navigation.phones().begin(); }});
}

void tellBy(WaitingWindow& window, Waiting& waiting) {
    waiting.use([&window](std::chrono::milliseconds waited) { return window.waitOn(waited); });
}

// What one handling of events waits for is one matter.
void beginTurns(WaitingWindow& window, Waiting& waiting) {
    const auto begin = [&window, &waiting] {
        waiting.beginAnew();
        window.close();
    };
    begin();
    auto* const dispatcher = QAbstractEventDispatcher::instance();
    QObject::connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, dispatcher, begin);
    QObject::connect(dispatcher, &QAbstractEventDispatcher::awake, dispatcher, begin);
}

int runWindow(QGuiApplication& application, const StopSignals& stop, OpenedPhone& phone, const Options& options) {
    QSocketNotifier stopped(stop.descriptor(), QSocketNotifier::Read);
    // Not `quit`, which the window may hold up with a question.
    QObject::connect(&stopped, &QSocketNotifier::activated, &application, [] { QCoreApplication::exit(); });
    const QString key = keyOf(phone);
    PhoneOpener opener(options);
    const std::vector<std::string> unopened = openFurther(opener, options);
    SingleInstance instance(key);
    if (!instance.claim(QString::fromStdString(options.page))) {
        return unopened.empty() ? leaveToOpenWindow(options, instance.problem())
                                : failBeforeUser(failed, unopened.front());
    }

    DesktopTaste taste;
    LiveServices services(phone);
    LinkOpener links(services.opener);
    const DeviceShape& device = phone.shape;
    WindowMemory memory(phone.isReport ? reportsKey : key,
                        QString::fromUtf8(device.name.data(), qsizetype(device.name.size())));
    const SessionServices live = services.forSession();
    DesktopSession session({phone,
                            {live.files, live.notifications, links, live.device, live.listener, live.history},
                            services.handOver,
                            shapeForScreen(device)});
    links.tell(session.navigation().banners());
    const auto opened = session.open(sizeToOpenIn(options, device, memory));
    if (!opened) return failBeforeUser(failed, opened.error().text());
    const auto page = openFirstPage(session.navigation(), options, memory);
    // First: a page may be missing only because of what could not be read.
    if (!page) return failBeforeUser(failed, phone.outcomes->takeProblem().value_or(page.error()).text());
    QQuickView& view = session.window().view();
    opener.serve(session.navigation().phones(), view, phone);
    if (phone.isSample) offerPhones(session.navigation());
    for (const std::string& problem : unopened)
        session.navigation().tell({.text = QString::fromStdString(printable(problem)), .isProblem = true});
    followTaste(session.window(), taste, options);
    session.window().setZoom(memory.zoom());
    QObject::connect(&instance, &SingleInstance::wanted, &view,
                     [&view](const QByteArray& token) { comeForward(view, token); });
    instance.openPagesBy([&session](const QString& titles) { return openPageInWindow(session.navigation(), titles); });
    view.show();
    // After the first picture: what comes before it is what the user waits for.
    QTimer::singleShot(0, &view, [&session] {
        session.watchFiles();
        QGuiApplication::setWindowIcon(QIcon::fromTheme(QGuiApplication::desktopFileName()));
    });
    const int status = application.exec();
    memory.remember(view.size(), session.navigation().path(), session.window().zoom());
    return status;
}

}  // namespace

int runProgram(int argumentCount, char** arguments) {
    int status = done;
    const auto options = parseOptions(argumentCount, arguments, status);
    if (!options) return status;
    WaitingWindow waitingWindow(options->phone);
    Waiting& waiting = *options->ssh.waiting;
    const bool isForScreenshots = !options->screenshots.empty();
    // On a terminal it is said there, where ssh may be asking something.
    if (!isForScreenshots && isReadOnDisplayAlone()) tellBy(waitingWindow, waiting);
    auto phone = OpenedPhone::openPhoneOrReport(*options, "trivel3-settings");
    waitingWindow.close();
    if (!phone && (isForScreenshots || waiting.isStopped())) return fail(failed, phone.error());
    if (!phone) return failBeforeUser(argumentCount, arguments, failed, phone.error().text());
    if (isForScreenshots) {
        prepareForScreenshots(phone->shape);
        Application application(argumentCount, arguments);
        setUpApplication();
        return runScreenshots(*phone, *options);
    }
    const StopSignals stop;
    DisplayedApplication<Application> application(argumentCount, arguments);
    tellBy(waitingWindow, waiting);
    beginTurns(waitingWindow, waiting);
    return runWindow(application.get(), stop, *phone, *options);
}

}  // namespace hosts::desktop
