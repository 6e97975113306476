// SPDX-License-Identifier: MIT
#pragma once

#include <QLocalServer>
#include <QObject>

namespace hosts::desktop {

/// One window for each phone: a second program for the same phone asks the first to come forward.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    /// `key` stands for the phone.
    explicit SingleInstance(const QString& key);

    /// Whether another program has the phone and has been asked to come forward.
    bool wakeOther();

    /// From here on, this program answers for the phone. Without a place for the socket it does so
    /// for nobody, and works all the same.
    void claim();

signals:
    /// Another program has been started for this phone. `token` is what its desktop gave it to bring
    /// a window forward with, or empty.
    void wanted(const QByteArray& token);

private:
    void answer();

    QString _socket;
    QLocalServer _server;
};

}  // namespace hosts::desktop
