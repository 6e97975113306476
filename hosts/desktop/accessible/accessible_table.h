// SPDX-License-Identifier: MIT
#pragma once

#include <QAccessibleObject>
#include <QHash>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>

#include "hosts/desktop/model/table_model.h"

namespace hosts::desktop {

class AccessibleLine;
class AccessibleTable;

/// Hears of the keyboard's way through a table, which only the table's item tells.
class FocusListener : public QObject {
    Q_OBJECT

public:
    FocusListener(AccessibleTable& table, QQuickItem& item);

private slots:
    void noteFocus();

private:
    AccessibleTable& _table;
};

/// A page's table to those who cannot see it: each of its lines that says something, from the first to the last,
/// whether or not it is on the screen. The keyboard's focus is never the table's but one row's. For the user
/// interface's thread, as all that has to do with accessibility here.
class AccessibleTable : public QAccessibleObject {
public:
    /// `item` is a TablePage, and outlives the object.
    explicit AccessibleTable(QQuickItem* item);
    ~AccessibleTable() override;

    QQuickItem& item() const { return *static_cast<QQuickItem*>(object()); }
    /// Null for a page that is no table.
    TableModel* model() const;

    QWindow* window() const override { return item().window(); }
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int index) const override;
    int childCount() const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;
    QString text(QAccessible::Text kind) const override;
    QRect rect() const override;
    QAccessible::Role role() const override { return QAccessible::List; }
    QAccessible::State state() const override;

    /// For its lines, which know themselves by their ids. The number of a line in the model is -1 when it has gone.
    int lineOf(int id) const;
    bool isUsable() const { return item().isEnabled() && item().isVisible(); }
    bool isFocused(int line) const;
    QRect rectOf(int line) const;
    void focus(int line);
    void activate(int line);

    /// Tells whoever listens which row has the keyboard, where one has.
    void tellFocus();

private:
    void listen(TableModel& model);
    void tellChanges(int first, int last);
    void tellInsertion(int first, int last);
    void tellRemoval(int first, int last);
    void forgetAll();
    void count() const;
    QAccessibleInterface* header() const;
    QAccessibleInterface* knownAt(int line) const;
    QAccessibleInterface* lineAt(int line) const;
    QQuickItem* delegateOf(int line) const;
    int currentLine() const;

    FocusListener _listener;
    mutable QPointer<TableModel> _model;
    mutable QHash<int, QAccessible::Id> _interfaces;  ///< by the lines' ids
    mutable QList<int> _spoken;                       ///< the numbers of the lines that say something
    mutable QHash<int, int> _places;                  ///< every line's number by its id
    mutable bool _isCounted = false;
};

}  // namespace hosts::desktop
