// SPDX-License-Identifier: MIT
#include "tests/desktop/assistive_technology.h"

#include <signal.h>

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusReply>
#include <QDBusVariant>
#include <QTest>
#include <stdexcept>

namespace desktop_tests {
namespace {

constexpr int mostWait = 60000;  // ms

constexpr const char* accessibleInterface = "org.a11y.atspi.Accessible";
constexpr const char* actionInterface = "org.a11y.atspi.Action";
constexpr const char* componentInterface = "org.a11y.atspi.Component";

QDBusMessage callOn(const QDBusConnection& bus, const QString& service, const QString& path, const char* interface,
                    const char* method, const QVariantList& arguments) {
    QDBusMessage message =
        QDBusMessage::createMethodCall(service, path, QLatin1String(interface), QLatin1String(method));
    message.setArguments(arguments);
    return bus.call(message, QDBus::Block, mostWait);
}

QVariant firstOf(const QDBusMessage& answer) {
    const bool isAnswer = answer.type() == QDBusMessage::ReplyMessage && !answer.arguments().isEmpty();
    return !isAnswer ? QVariant() : answer.arguments().constFirst();
}

}  // namespace

QDBusMessage Accessible::call(const char* interface, const char* method, const QVariantList& arguments) const {
    return callOn(_bus, _program, _path, interface, method, arguments);
}

QString Accessible::property(const char* name) const {
    const auto answer = call("org.freedesktop.DBus.Properties", "Get",
                             {QString::fromLatin1(accessibleInterface), QString::fromLatin1(name)});
    return firstOf(answer).value<QDBusVariant>().variant().toString();
}

QString Accessible::role() const {
    return firstOf(call(accessibleInterface, "GetRoleName")).toString();
}

QString Accessible::name() const {
    return property("Name");
}

QString Accessible::description() const {
    return property("Description");
}

bool Accessible::has(State state) const {
    constexpr unsigned bits = 32;
    const auto words = qdbus_cast<QList<uint>>(firstOf(call(accessibleInterface, "GetState")));
    return words.size() > state / bits && (words[state / bits] >> (state % bits) & 1) != 0;
}

QStringList Accessible::actions() const {
    const auto answer = firstOf(call(actionInterface, "GetActions")).value<QDBusArgument>();
    QStringList names;
    if (answer.currentType() != QDBusArgument::ArrayType) return names;
    answer.beginArray();
    while (!answer.atEnd()) {
        QString name;
        QString description;
        QString key;
        answer.beginStructure();
        answer >> name >> description >> key;
        answer.endStructure();
        names.append(name);
    }
    answer.endArray();
    return names;
}

QList<Accessible> Accessible::children() const {
    const auto answer = firstOf(call(accessibleInterface, "GetChildren")).value<QDBusArgument>();
    QList<Accessible> found;
    if (answer.currentType() != QDBusArgument::ArrayType) return found;
    answer.beginArray();
    while (!answer.atEnd()) {
        QString program;
        QDBusObjectPath path;
        answer.beginStructure();
        answer >> program >> path;
        answer.endStructure();
        found.append(Accessible(_bus, program, path.path()));
    }
    answer.endArray();
    return found;
}

bool Accessible::act(const QString& action) const {
    const auto number = actions().indexOf(action);
    return number >= 0 && firstOf(call(actionInterface, "DoAction", {static_cast<int>(number)})).toBool();
}

bool Accessible::takeFocus() const {
    return firstOf(call(componentInterface, "GrabFocus")).toBool();
}

AssistiveTechnology::AssistiveTechnology(const kit::Environment& environment)
    : _launcher({TEST_AT_SPI_BUS_LAUNCHER, "--launch-immediately"}, environment) {
    static int number = 0;
    _name = QStringLiteral("assistive-%1").arg(++number);
    const QString sessionName = _name + QStringLiteral("-session");
    const auto session =
        QDBusConnection::connectToBus(QString::fromStdString(environment.at("DBUS_SESSION_BUS_ADDRESS")), sessionName);
    const auto address = [&session] {
        return firstOf(callOn(session, "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", {})).toString();
    };
    if (!QTest::qWaitFor([&] { return !address().isEmpty(); }, mostWait)) throw std::runtime_error("no such bus");
    _bus = QDBusConnection::connectToBus(address(), _name);
    QDBusConnection::disconnectFromBus(sessionName);
}

// The launcher leaves the bus that it has started alone when it ends; the registry ends with the bus.
AssistiveTechnology::~AssistiveTechnology() {
    const QString daemon = QStringLiteral("org.freedesktop.DBus");
    const QDBusReply<uint> process = _bus->interface()->servicePid(daemon);
    _bus.reset();
    QDBusConnection::disconnectFromBus(_name);
    if (process.isValid()) ::kill(static_cast<pid_t>(process.value()), SIGTERM);
}

std::optional<Accessible> AssistiveTechnology::window() const {
    const Accessible desktop(*_bus, "org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root");
    for (const Accessible& program : desktop.children()) {
        const QList<Accessible> windows = program.children();
        if (!windows.isEmpty()) return windows.constFirst();
    }
    return std::nullopt;
}

}  // namespace desktop_tests
