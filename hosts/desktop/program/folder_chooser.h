// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QVariantMap>

class QWindow;

namespace hosts::desktop {

/// The desktop's own chooser, asked for a folder over its portal. One is asked for at a time.
class FolderChooser : public QObject {
    Q_OBJECT

public:
    /// Over the window; by and by one of the signals follows, or none where the user changes their mind.
    void choose(QWindow& over);

signals:
    void chosen(const QString& folder);
    /// The desktop has no such chooser.
    void unavailable();

private slots:
    void takeResponse(uint outcome, const QVariantMap& results);

private:
    void listenTo(const QString& request);

    QDBusConnection _bus = QDBusConnection::sessionBus();
    QString _request;
};

}  // namespace hosts::desktop
