// SPDX-License-Identifier: MIT
#include "hosts/desktop/program/program.h"

#include <QGuiApplication>
#include <QQuickWindow>

#include "hosts/desktop/drawing/fonts.h"
#include "hosts/desktop/program/exit_status.h"
#include "hosts/desktop/program/live_services.h"
#include "hosts/desktop/program/options.h"
#include "hosts/desktop/program/screenshots.h"
#include "hosts/desktop/program/settings_window.h"

namespace hosts::desktop {
namespace {

constexpr double usualFontSize = 17;

void setUpApplication() {
    QGuiApplication::setApplicationName(QStringLiteral("trivel3-settings"));
    QGuiApplication::setApplicationVersion(QStringLiteral(TRIVEL3_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("com.fenwary.trivel3.Settings"));
    QGuiApplication::setFont(systemFont(usualFontSize));
    QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering);
}

int runScreenshots(OpenedPhone& phone, const Options& options) {
    std::string error;
    return takeScreenshots(phone, options, error) ? done : fail(failed, error);
}

int runWindow(QGuiApplication& application, OpenedPhone& phone, const Options& options) {
    LiveServices services(phone);
    SettingsSession session(services.forSession(), phone.installation.systemImage, *options.device);
    Navigation navigation(services.handOver);
    SettingsWindow window(navigation);
    std::string error;
    const platform::CGSize size = options.device->screen.bounds.size();
    if (!window.load(QSizeF(size.width, size.height).toSize(), error) || !session.loadPane(error)) {
        return fail(failed, error);
    }
    auto root = session.makeRootPage(error);
    if (!root) return fail(failed, error);
    window.view().setTitle(QString::fromStdString(root->title()));
    window.setDark(options.dark.value_or(false));
    navigation.open(std::move(root));
    window.view().show();
    return application.exec();
}

}  // namespace

int runProgram(int argumentCount, char** arguments) {
    int status = done;
    const auto options = parseOptions(argumentCount, arguments, status);
    if (!options) return status;
    std::string error;
    auto phone = openPhone(options->phone, error);
    if (!phone) return fail(failed, error);
    const bool isForPictures = !options->screenshots.empty();
    if (isForPictures) prepareForScreenshots(*options->device);
    QGuiApplication application(argumentCount, arguments);
    setUpApplication();
    return isForPictures ? runScreenshots(*phone, *options) : runWindow(application, *phone, *options);
}

}  // namespace hosts::desktop
