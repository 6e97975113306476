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
#include <algorithm>

namespace hosts::desktop {
namespace {

using Settings = QMap<QString, QVariantMap>;

const QString portal = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalObject = QStringLiteral("/org/freedesktop/portal/desktop");
const QString portalSettings = QStringLiteral("org.freedesktop.portal.Settings");

const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString gnome = QStringLiteral("org.gnome.desktop.interface");
const QString plasma = QStringLiteral("org.kde.kdeglobals.KDE");

constexpr uint darkScheme = 1;
constexpr uint moreContrast = 1;
constexpr uint reducedMotion = 1;
constexpr int middleLightness = 128;

// Three numbers from 0 to 1. Others mean that there is no such colour.
std::optional<QColor> accentIn(const QVariant& value) {
    if (!value.canConvert<QDBusArgument>()) return std::nullopt;
    const auto structure = value.value<QDBusArgument>();
    if (structure.currentSignature() != QLatin1String("(ddd)")) return std::nullopt;
    double red = 0;
    double green = 0;
    double blue = 0;
    structure.beginStructure();
    structure >> red >> green >> blue;
    structure.endStructure();
    for (double part : {red, green, blue}) {
        if (!(part >= 0 && part <= 1)) return std::nullopt;
    }
    return QColor::fromRgbF(static_cast<float>(red), static_cast<float>(green), static_cast<float>(blue));
}

// Anything but a positive number leaves texts as they are.
double scaleIn(const QVariant& value) {
    const double scale = value.toDouble();
    return scale > 0 ? std::clamp(scale, smallestTextScale, largestTextScale) : 1;
}

}  // namespace

bool systemColoursAreDark() {
    return QGuiApplication::palette().color(QPalette::Window).lightness() < middleLightness;
}

DesktopTaste::DesktopTaste() : _taste{.dark = systemColoursAreDark(), .accent = std::nullopt} {
    ask();
}

DesktopTaste::~DesktopTaste() = default;

void DesktopTaste::ask() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return;
    // A slot that takes what the library has not been told of cannot be connected.
    qRegisterMetaType<QDBusVariant>();
    bus.connect(portal, portalObject, portalSettings, QStringLiteral("SettingChanged"), this,
                SLOT(settingChanged(QString, QString, QDBusVariant)));
    QDBusMessage question =
        QDBusMessage::createMethodCall(portal, portalObject, portalSettings, QStringLiteral("ReadAll"));
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
    const Taste before = _taste;
    for (auto group = settings.begin(); group != settings.end(); ++group) {
        for (auto setting = group->begin(); setting != group->end(); ++setting)
            take(group.key(), setting.key(), setting.value());
    }
    if (_taste != before) emit changed();
}

void DesktopTaste::settingChanged(const QString& group, const QString& key, const QDBusVariant& value) {
    const Taste before = _taste;
    take(group, key, value.variant());
    if (_taste != before) emit changed();
}

void DesktopTaste::take(const QString& group, const QString& key, const QVariant& value) {
    if (group == appearance) return takeAppearance(key, value);
    if (group == gnome && key == QLatin1String("enable-animations")) _taste.lessMotion = !value.toBool();
    if (group == gnome && key == QLatin1String("text-scaling-factor")) _taste.textScale = scaleIn(value);
    if (group == plasma && key == QLatin1String("AnimationDurationFactor")) _taste.lessMotion = value.toDouble() <= 0;
}

void DesktopTaste::takeAppearance(const QString& key, const QVariant& value) {
    if (key == QLatin1String("color-scheme")) _taste.dark = value.toUInt() == darkScheme;
    if (key == QLatin1String("contrast")) _taste.highContrast = value.toUInt() == moreContrast;
    if (key == QLatin1String("reduced-motion")) _taste.lessMotion = value.toUInt() == reducedMotion;
    if (key == QLatin1String("accent-color")) _taste.accent = accentIn(value);
}

}  // namespace hosts::desktop
