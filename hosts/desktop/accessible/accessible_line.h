// SPDX-License-Identifier: MIT
#pragma once

#include <QAccessibleInterface>

#include "hosts/desktop/accessible/accessible_table.h"

namespace hosts::desktop {

/// A row, header or footer of a table to those who cannot see it. It says what the row shows at the time it is asked,
/// and lives as long as the table knows the line.
class AccessibleLine : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    /// The table outlives the line.
    AccessibleLine(AccessibleTable& table, int id);

    int id() const { return _id; }
    /// What has changed since it was last told is told to whoever listens.
    void tellChange();

    bool isValid() const override { return line() >= 0; }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return _table.window(); }
    QAccessibleInterface* parent() const override { return &_table; }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override { return _table.rectOf(line()); }
    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    QStringList actionNames() const override;
    void doAction(const QString& name) override;
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    int line() const { return _table.lineOf(_id); }
    SpokenLine spoken() const;
    QString useName() const;

    AccessibleTable& _table;
    int _id;
    QAccessible::State _toldState;
    QString _toldName;
    QString _toldDescription;
};

}  // namespace hosts::desktop
