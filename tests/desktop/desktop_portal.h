// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>
#include <QVariantMap>
#include <string>

namespace desktop_tests {

/// A desktop's answers about its user's taste, on a bus: what ReadAll answers, and who is told of a
/// change. Its name goes when it does. For the thread that runs the event loop.
class DesktopPortal : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    using Settings = QMap<QString, QVariantMap>;

    /// A desktop that has this taste from the start.
    DesktopPortal(const std::string& busAddress, Settings settings);
    ~DesktopPortal() override;

    /// How an accent colour goes over the bus.
    static QVariant accent(double red, double green, double blue);

    /// The user changes a setting.
    void change(const QString& group, const QString& key, const QVariant& value);
    bool wasAsked() const { return _wasAsked; }

public slots:
    QMap<QString, QVariantMap> ReadAll(const QStringList& groups);

signals:
    void SettingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    QDBusConnection _bus;
    Settings _settings;
    bool _wasAsked = false;
};

}  // namespace desktop_tests
