// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QObject>

namespace hosts::desktop {

/// One window for each phone: a second program for the same phone asks the first to come forward. The
/// one that owns the phone's name on the session bus is the first.
class SingleInstance : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.fenwary.trivel3.Settings")

public:
    /// `key` stands for the phone.
    explicit SingleInstance(const QString& key);

    /// Makes this program the phone's. False when another program is, and has answered that it comes
    /// forward. One that does not answer within a second keeps nobody from the settings, and where
    /// there is no session bus every program works for itself.
    bool claim();

    /// What other programs call, under the name that it has on the bus.
    Q_SCRIPTABLE Q_SLOT void Raise(const QString& token);

signals:
    /// Another program has been started for this phone. `token` is what its desktop gave it to bring
    /// a window forward with, or empty.
    void wanted(const QByteArray& token);

private:
    bool raiseOther();

    QDBusConnection _bus = QDBusConnection::sessionBus();
    QString _name;
};

}  // namespace hosts::desktop
