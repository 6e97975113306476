// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QVariantMap>
#include <memory>

class QDBusPendingCallWatcher;
class QDBusVariant;

namespace hosts::desktop {

/// What the user wants of all programs: a dark appearance, less motion. The desktop is asked over its
/// portal without waiting for it; until it has answered, and where there is none, the system's
/// colours decide.
class DesktopTaste : public QObject {
    Q_OBJECT

public:
    /// Asks the desktop, and listens to it from then on.
    DesktopTaste();
    ~DesktopTaste() override;

    /// Takes in an answer that has come by now.
    void takeAnswer();

    bool prefersDark() const { return _prefersDark; }
    bool prefersLessMotion() const { return _prefersLessMotion; }

signals:
    void changed();

private slots:
    void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    void ask();
    /// Whether something follows from the setting that was not so before.
    bool take(const QString& group, const QString& key, const QVariant& value);

    std::unique_ptr<QDBusPendingCallWatcher> _question;
    bool _prefersDark;
    bool _prefersLessMotion = false;
};

}  // namespace hosts::desktop
