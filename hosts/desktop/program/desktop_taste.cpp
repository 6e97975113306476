// SPDX-License-Identifier: MIT
#include "hosts/desktop/program/desktop_taste.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QPalette>
#include <utility>

namespace hosts::desktop {
namespace {

using Settings = QMap<QString, QVariantMap>;

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString object = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.Settings");

const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString gnome = QStringLiteral("org.gnome.desktop.interface");
const QString plasma = QStringLiteral("org.kde.kdeglobals.KDE");

constexpr uint darkScheme = 1;
constexpr int middleLightness = 128;

bool systemColoursAreDark() {
    return QGuiApplication::palette().color(QPalette::Window).lightness() < middleLightness;
}

}  // namespace

DesktopTaste::DesktopTaste() : _prefersDark(systemColoursAreDark()) {
    ask();
}

DesktopTaste::~DesktopTaste() = default;

void DesktopTaste::ask() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return;
    bus.connect(service, object, interface, QStringLiteral("SettingChanged"), this,
                SLOT(settingChanged(QString, QString, QDBusVariant)));
    QDBusMessage question = QDBusMessage::createMethodCall(service, object, interface, QStringLiteral("ReadAll"));
    question << QStringList{appearance, gnome, plasma};
    _question = std::make_unique<QDBusPendingCallWatcher>(bus.asyncCall(question));
    connect(_question.get(), &QDBusPendingCallWatcher::finished, this, &DesktopTaste::takeAnswer);
}

void DesktopTaste::takeAnswer() {
    if (!_question || !_question->isFinished()) return;
    const QDBusPendingReply<> reply = *_question;
    _question.release()->deleteLater();
    if (reply.isError() || reply.reply().arguments().isEmpty()) return;
    const auto settings = qdbus_cast<Settings>(reply.reply().arguments().constFirst());
    bool isNews = false;
    for (auto group = settings.begin(); group != settings.end(); ++group) {
        for (auto setting = group->begin(); setting != group->end(); ++setting)
            isNews |= take(group.key(), setting.key(), setting.value());
    }
    if (isNews) emit changed();
}

void DesktopTaste::settingChanged(const QString& group, const QString& key, const QDBusVariant& value) {
    if (take(group, key, value.variant())) emit changed();
}

bool DesktopTaste::take(const QString& group, const QString& key, const QVariant& value) {
    const bool wasDark = _prefersDark;
    const bool wantedLessMotion = _prefersLessMotion;
    if (group == appearance && key == QLatin1String("color-scheme")) _prefersDark = value.toUInt() == darkScheme;
    if (group == appearance && key == QLatin1String("reduced-motion")) _prefersLessMotion = value.toUInt() == 1;
    if (group == gnome && key == QLatin1String("enable-animations")) _prefersLessMotion = !value.toBool();
    if (group == plasma && key == QLatin1String("AnimationDurationFactor")) {
        _prefersLessMotion = value.toDouble() <= 0;
    }
    return wasDark != _prefersDark || wantedLessMotion != _prefersLessMotion;
}

}  // namespace hosts::desktop
