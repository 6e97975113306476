// SPDX-License-Identifier: MIT
#include "tests/desktop/desktop_portal.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusMetaType>
#include <stdexcept>

namespace desktop_tests {
namespace {

const QString connectionName = QStringLiteral("portal");

struct Accent {
    double red = 0;
    double green = 0;
    double blue = 0;
};

QDBusArgument& operator<<(QDBusArgument& argument, const Accent& accent) {
    argument.beginStructure();
    argument << accent.red << accent.green << accent.blue;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, Accent& accent) {
    argument.beginStructure();
    argument >> accent.red >> accent.green >> accent.blue;
    argument.endStructure();
    return argument;
}

}  // namespace
}  // namespace desktop_tests

Q_DECLARE_METATYPE(desktop_tests::Accent)

namespace desktop_tests {

QDBusObjectPath ChooserPortal::OpenFile(const QString&, const QString&, const QVariantMap& options,
                                        const QDBusMessage& call) {
    asked = options;
    QString sender = call.service().mid(1);
    sender.replace(u'.', u'_');
    const QString request =
        "/org/freedesktop/portal/desktop/request/" + sender + u'/' + options.value("handle_token").toString();
    QDBusMessage response = QDBusMessage::createSignal(request, "org.freedesktop.portal.Request", "Response");
    QVariantMap results;
    if (!address.isEmpty()) results["uris"] = QStringList(address);
    response << (address.isEmpty() ? 1U : 0U) << results;
    _bus.send(response);
    return QDBusObjectPath(request);
}

DesktopPortal::DesktopPortal(const std::string& busAddress, Settings settings)
    : _bus(QDBusConnection::connectToBus(QString::fromStdString(busAddress), connectionName)),
      _settings(std::move(settings)),
      _chooser(new ChooserPortal(*this, _bus)) {
    qDBusRegisterMetaType<Settings>();
    const bool isThere = _bus.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), this,
                                             QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals |
                                                 QDBusConnection::ExportAdaptors) &&
                         _bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
    if (!isThere) throw std::runtime_error("the portal cannot be had: " + _bus.lastError().message().toStdString());
}

DesktopPortal::~DesktopPortal() {
    QDBusConnection::disconnectFromBus(connectionName);
}

QVariant DesktopPortal::accent(double red, double green, double blue) {
    qDBusRegisterMetaType<Accent>();
    return QVariant::fromValue(Accent{red, green, blue});
}

void DesktopPortal::change(const QString& group, const QString& key, const QVariant& value) {
    _settings[group][key] = value;
    emit SettingChanged(group, key, QDBusVariant(value));
}

DesktopPortal::Settings DesktopPortal::ReadAll(const QStringList& groups) {
    _wasAsked = true;
    Settings answer;
    for (const QString& group : groups) {
        if (_settings.contains(group)) answer[group] = _settings[group];
    }
    return answer;
}

}  // namespace desktop_tests
