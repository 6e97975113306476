// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QObject>
#include <QVariantMap>
#include <string>
#include <utility>

namespace desktop_tests {

/// The desktop's chooser of folders, over which the user agrees to what is chosen already, at once.
class ChooserPortal : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.FileChooser")

public:
    explicit ChooserPortal(QObject& portal, QDBusConnection bus)
        : QDBusAbstractAdaptor(&portal), _bus(std::move(bus)) {}

    /// What the user chooses; empty for a user who changes their mind.
    QString address;
    /// What it was last asked.
    QVariantMap asked;

public slots:
    QDBusObjectPath OpenFile(const QString& parent, const QString& title, const QVariantMap& options,
                             const QDBusMessage& call);

private:
    QDBusConnection _bus;
};

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
    ChooserPortal& chooser() { return *_chooser; }

public slots:
    QMap<QString, QVariantMap> ReadAll(const QStringList& groups);

signals:
    void SettingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    QDBusConnection _bus;
    Settings _settings;
    bool _wasAsked = false;
    ChooserPortal* _chooser;
};

}  // namespace desktop_tests
