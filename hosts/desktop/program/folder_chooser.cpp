// SPDX-License-Identifier: MIT
#include "hosts/desktop/program/folder_chooser.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QGuiApplication>
#include <QUrl>
#include <QWindow>

namespace hosts::desktop {
namespace {

const QString desktopPortal = QStringLiteral("org.freedesktop.portal.Desktop");
const QString desktopObject = QStringLiteral("/org/freedesktop/portal/desktop");
const QString fileChooser = QStringLiteral("org.freedesktop.portal.FileChooser");
const QString requestInterface = QStringLiteral("org.freedesktop.portal.Request");

// On Wayland a window has a name for others only by a protocol that Qt does not speak for us.
QString portalNameOf(const QWindow& window) {
    if (QGuiApplication::platformName() != QLatin1String("xcb")) return {};
    return QStringLiteral("x11:") + QString::number(window.winId(), 16);
}

// Where the portal tells the outcome, going by the rule that it makes its requests' names by.
QString requestOf(const QDBusConnection& bus, const QString& token) {
    QString sender = bus.baseService().mid(1);
    sender.replace(u'.', u'_');
    return desktopObject + QStringLiteral("/request/") + sender + u'/' + token;
}

}  // namespace

void FolderChooser::choose(QWindow& over) {
    if (!_bus.isConnected()) return emit unavailable();
    static int count = 0;
    const QString token = QStringLiteral("trivel3_%1").arg(++count);
    // Before the question: the answer may be there before that to the call.
    listenTo(requestOf(_bus, token));
    QDBusMessage call =
        QDBusMessage::createMethodCall(desktopPortal, desktopObject, fileChooser, QStringLiteral("OpenFile"));
    call << portalNameOf(over) << tr("Open the Folder of a Phone")
         << QVariantMap{{QStringLiteral("handle_token"), token},
                        {QStringLiteral("directory"), true},
                        {QStringLiteral("modal"), true}};
    auto* const question = new QDBusPendingCallWatcher(_bus.asyncCall(call), this);
    connect(question, &QDBusPendingCallWatcher::finished, this, [this, question] {
        const QDBusPendingReply<QDBusObjectPath> reply = *question;
        question->deleteLater();
        if (reply.isError()) return emit unavailable();
        listenTo(reply.value().path());
    });
}

void FolderChooser::listenTo(const QString& request) {
    if (request == _request) return;
    const QString response = QStringLiteral("Response");
    const char* const slot = SLOT(takeResponse(uint, QVariantMap));
    if (!_request.isEmpty()) _bus.disconnect(desktopPortal, _request, requestInterface, response, this, slot);
    _request = request;
    _bus.connect(desktopPortal, _request, requestInterface, response, this, slot);
}

void FolderChooser::takeResponse(uint outcome, const QVariantMap& results) {
    const QStringList addresses = results.value(QStringLiteral("uris")).toStringList();
    if (outcome == 0 && !addresses.isEmpty()) emit chosen(QUrl(addresses.front()).toLocalFile());
}

}  // namespace hosts::desktop
