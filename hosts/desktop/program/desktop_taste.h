// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QObject>
#include <QVariantMap>
#include <memory>
#include <optional>

class QDBusPendingCallWatcher;
class QDBusVariant;

namespace hosts::desktop {

inline constexpr double smallestTextScale = 0.5;
inline constexpr double largestTextScale = 3;

/// What the user wants of all programs.
struct Taste {
    bool dark = false;
    bool highContrast = false;
    bool lessMotion = false;
    /// The colour of what can be touched; nothing where the user has chosen none.
    std::optional<QColor> accent;
    /// How large texts are, 1 being usual, within the bounds above.
    double textScale = 1;

    bool operator==(const Taste&) const = default;
};

/// Whether the colours are dark that Qt has from the system.
bool systemColoursAreDark();

/// The taste that the desktop knows of. It is asked over its portal without waiting for it, and
/// listened to from then on; until it has answered, and where there is none, the system's colours
/// decide.
class DesktopTaste : public QObject {
    Q_OBJECT

public:
    DesktopTaste();
    ~DesktopTaste() override;

    /// Takes in an answer that has come by now.
    void takeAnswer();

    const Taste& taste() const { return _taste; }

signals:
    void changed();

private slots:
    void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    void ask();
    void take(const QString& group, const QString& key, const QVariant& value);
    void takeAppearance(const QString& key, const QVariant& value);

    std::unique_ptr<QDBusPendingCallWatcher> _question;
    Taste _taste;
};

}  // namespace hosts::desktop
