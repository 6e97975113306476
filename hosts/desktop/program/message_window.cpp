// SPDX-License-Identifier: MIT
#include "hosts/desktop/program/message_window.h"

#include <unistd.h>

#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickView>

#include "hosts/desktop/drawing/qt_values.h"
#include "hosts/desktop/program/desktop_taste.h"
#include "hosts/desktop/program/display_opening.h"
#include "hosts/desktop/program/settings_window.h"
#include "hosts/session/printable.h"

namespace hosts::desktop {
namespace {

const QString closing = QStringLiteral("Close");

}  // namespace

void showMessage(const std::string& message, const QString& action) {
    QQuickView view;
    importSettingsModule(*view.engine());
    view.setInitialProperties({{QStringLiteral("text"), QString::fromStdString(printable(message))},
                               {QStringLiteral("action"), action},
                               {QStringLiteral("dark"), systemColoursAreDark()}});
    view.setResizeMode(QQuickView::SizeRootObjectToView);
    view.setSource(QUrl(QStringLiteral("qrc:/qt/qml/Trivel3/Settings/MessageWindow.qml")));
    QQuickItem* const content = view.rootObject();
    if (!content) return;
    view.setTitle(QStringLiteral("Trivel 3"));
    view.setFlag(Qt::Dialog);
    view.resize(QSizeF(content->implicitWidth(), content->implicitHeight()).toSize());
    QObject::connect(content, SIGNAL(closed()), &view, SLOT(close()));
    view.show();
    view.requestActivate();
    QGuiApplication::exec();
}

bool isReadOnDisplayAlone() {
    const bool hasDisplay = qEnvironmentVariableIsSet("WAYLAND_DISPLAY") || qEnvironmentVariableIsSet("DISPLAY");
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    const bool isShown = platform.isEmpty() || platform.startsWith("xcb") || platform.startsWith("wayland");
    return ::isatty(STDERR_FILENO) != 1 && hasDisplay && isShown;
}

int failBeforeUser(ExitStatus status, const std::string& message) {
    fail(status, message);
    if (isReadOnDisplayAlone()) showMessage(message, closing);
    return status;
}

int failBeforeUser(int argumentCount, char** arguments, ExitStatus status, const std::string& message) {
    // First: the display may be one that cannot be opened.
    fail(status, message);
    if (!isReadOnDisplayAlone()) return status;
    const DisplayedApplication<QGuiApplication> application(argumentCount, arguments);
    showMessage(message, closing);
    return status;
}

}  // namespace hosts::desktop
