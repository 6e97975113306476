// SPDX-License-Identifier: MIT
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QColor>
#include <QList>
#include <QObject>

namespace hosts::desktop {

/// How much lighter the one colour is than the other, as WCAG 2 counts: from 1, not at all, to 21. Both
/// are taken as opaque.
double contrastBetween(const QColor& one, const QColor& other);

/// The colour, as little darker or lighter as makes it differ from each of the grounds by at least so
/// much; black or white where nothing does. What is translucent shines on the first ground.
QColor withContrast(const QColor& colour, const QList<QColor>& grounds, double least);

/// The same for QML.
class Contrast : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    Q_INVOKABLE QColor reached(const QColor& colour, const QList<QColor>& grounds, double least) const {
        return withContrast(colour, grounds, least);
    }
};

}  // namespace hosts::desktop
