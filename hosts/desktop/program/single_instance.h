// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <functional>
#include <utility>

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
    /// The first is asked to show a page, too, where titles name one; what it says to that is in `problem`.
    bool claim(const QString& page = {});
    /// Why the other program has not shown the page; empty where it has.
    const QString& problem() const { return _problem; }

    /// Opens a page by its titles, and gives why it could not; empty where it has. From here on.
    void openPagesBy(std::function<QString(const QString& titles)> open) { _openPage = std::move(open); }

    /// What other programs call, under the name that it has on the bus.
    Q_SCRIPTABLE Q_SLOT void Raise(const QString& token);
    Q_SCRIPTABLE Q_SLOT QString OpenPage(const QString& token, const QString& titles);

signals:
    /// Another program has been started for this phone. `token` is what its desktop gave it to bring
    /// a window forward with, or empty.
    void wanted(const QByteArray& token);

private:
    bool raiseOther(const QString& page);

    QDBusConnection _bus = QDBusConnection::sessionBus();
    QString _name;
    QString _problem;
    std::function<QString(const QString&)> _openPage;
};

}  // namespace hosts::desktop
