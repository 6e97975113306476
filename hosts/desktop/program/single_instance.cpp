// SPDX-License-Identifier: MIT
#include "hosts/desktop/program/single_instance.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>

namespace hosts::desktop {
namespace {

constexpr int patience = 1000;  // ms

const QString busInterface = QStringLiteral("com.fenwary.trivel3.Settings");
const QString busObject = QStringLiteral("/com/fenwary/trivel3/Settings");

}  // namespace

// No part of a name on the bus begins with a digit.
SingleInstance::SingleInstance(const QString& key) : _name(busInterface + QStringLiteral(".phone_") + key) {}

bool SingleInstance::claim(const QString& page) {
    if (!_bus.isConnected()) return true;
    _bus.interface()->setTimeout(patience);
    // Before the name: who sees the name may call at once.
    _bus.registerObject(busObject, this, QDBusConnection::ExportScriptableSlots);
    if (_bus.registerService(_name)) return true;
    if (raiseOther(page)) return false;
    // The other may have ended by now.
    _bus.registerService(_name);
    return true;
}

bool SingleInstance::raiseOther(const QString& page) {
    const QString wish = page.isEmpty() ? QStringLiteral("Raise") : QStringLiteral("OpenPage");
    QDBusMessage call = QDBusMessage::createMethodCall(_name, busObject, busInterface, wish);
    call << qEnvironmentVariable("XDG_ACTIVATION_TOKEN");
    if (!page.isEmpty()) call << page;
    const QDBusMessage answer = _bus.call(call, QDBus::Block, patience);
    if (answer.type() != QDBusMessage::ReplyMessage) return false;
    _problem = answer.arguments().value(0).toString();
    return true;
}

void SingleInstance::Raise(const QString& token) {
    emit wanted(token.toUtf8());
}

QString SingleInstance::OpenPage(const QString& token, const QString& titles) {
    Raise(token);
    return _openPage ? _openPage(titles) : QStringLiteral("the window is not there yet");
}

}  // namespace hosts::desktop
