// SPDX-License-Identifier: MIT
#pragma once

#include <QAccessible>
#include <QList>
#include <QQuickItem>

namespace hosts::desktop {

/// Has those who cannot see the window told of its pages and composers as they are: all lines of a table, a composer as
/// what it is, and nothing of what lies beneath. To be called once there is an application object, before the first
/// window is made. What is told of single controls is said in QML.
void installAccessibleTree();

/// What is told within an item, in reading order: nothing that cannot be seen, and no page or composer that takes no
/// keys.
QList<QAccessibleInterface*> accessibleChildren(const QQuickItem& item);

/// What an item is told in; the window in the end.
QAccessibleInterface* accessibleParent(const QQuickItem& item);

/// Where the item is on the screen, in pixels.
QRect screenRect(const QQuickItem& item);

}  // namespace hosts::desktop
