// SPDX-License-Identifier: MIT
#include "hosts/desktop/accessible/accessible_table.h"

#include <algorithm>
#include <utility>

#include "hosts/desktop/accessible/accessible_line.h"
#include "hosts/desktop/accessible/accessible_tree.h"

namespace hosts::desktop {

FocusListener::FocusListener(AccessibleTable& table, QQuickItem& item) : _table(table) {
    connect(&item, &QQuickItem::activeFocusChanged, this, &FocusListener::noteFocus);
    connect(&item, SIGNAL(currentIndexChanged()), this, SLOT(noteFocus()));
}

void FocusListener::noteFocus() {
    _table.tellFocus();
}

AccessibleTable::AccessibleTable(QQuickItem* item) : QAccessibleObject(item), _listener(*this, *item) {}

AccessibleTable::~AccessibleTable() {
    forgetAll();
}

// The item may be asked for before it has its model.
TableModel* AccessibleTable::model() const {
    if (!_model) {
        _model = item().property("model").value<TableModel*>();
        if (_model) const_cast<AccessibleTable&>(*this).listen(*_model);
    }
    return _model;
}

void AccessibleTable::listen(TableModel& model) {
    using Model = QAbstractItemModel;
    QObject::connect(
        &model, &Model::dataChanged, &_listener,
        [this](const QModelIndex& first, const QModelIndex& last) { tellChanges(first.row(), last.row()); });
    QObject::connect(&model, &Model::rowsInserted, &_listener,
                     [this](const QModelIndex&, int first, int last) { tellInsertion(first, last); });
    QObject::connect(&model, &Model::rowsAboutToBeRemoved, &_listener,
                     [this](const QModelIndex&, int first, int last) { tellRemoval(first, last); });
    QObject::connect(&model, &Model::rowsRemoved, &_listener, [this] { _isCounted = false; });
    QObject::connect(&model, &Model::modelReset, &_listener, [this] { forgetAll(); });
}

// A footer that has come to say something is a line more.
void AccessibleTable::tellChanges(int first, int last) {
    _isCounted = false;
    for (int line = first; line <= last; ++line) {
        if (auto* known = static_cast<AccessibleLine*>(knownAt(line))) known->tellChange();
    }
}

void AccessibleTable::tellInsertion(int first, int last) {
    _isCounted = false;
    for (int line = first; line <= last; ++line) {
        if (!model()->says(line)) continue;
        QAccessibleEvent event(lineAt(line), QAccessible::ObjectCreated);
        QAccessible::updateAccessibility(&event);
    }
}

void AccessibleTable::tellRemoval(int first, int last) {
    for (int line = first; line <= last; ++line) {
        QAccessibleInterface* known = knownAt(line);
        if (!known) continue;
        QAccessibleEvent event(known, QAccessible::ObjectDestroyed);
        QAccessible::updateAccessibility(&event);
        QAccessible::deleteAccessibleInterface(_interfaces.take(model()->idAt(line)));
    }
}

void AccessibleTable::forgetAll() {
    _isCounted = false;
    for (const QAccessible::Id id : std::exchange(_interfaces, {}))
        QAccessible::deleteAccessibleInterface(id);
}

void AccessibleTable::tellFocus() {
    QAccessibleInterface* line = focusChild();
    if (!line) return;
    QAccessibleEvent event(line, QAccessible::Focus);
    QAccessible::updateAccessibility(&event);
}

// Counting all of them at each question would take the square of their number.
void AccessibleTable::count() const {
    if (_isCounted) return;
    _isCounted = true;
    _places.clear();
    _spoken.clear();
    const TableModel* lines = model();
    for (int line = 0; lines && line < lines->rowCount(); ++line) {
        _places.insert(lines->idAt(line), line);
        if (lines->says(line)) _spoken.append(line);
    }
}

int AccessibleTable::lineOf(int id) const {
    count();
    return _places.value(id, -1);
}

QAccessibleInterface* AccessibleTable::knownAt(int line) const {
    const auto found = _interfaces.constFind(model()->idAt(line));
    return found == _interfaces.constEnd() ? nullptr : QAccessible::accessibleInterface(*found);
}

QAccessibleInterface* AccessibleTable::lineAt(int line) const {
    if (QAccessibleInterface* known = knownAt(line)) return known;
    const int id = model()->idAt(line);
    // Qt's own list of interfaces has it from here on.
    auto* made = new AccessibleLine(const_cast<AccessibleTable&>(*this), id);
    _interfaces.insert(id, QAccessible::registerAccessibleInterface(made));
    return made;
}

QAccessibleInterface* AccessibleTable::parent() const {
    return accessibleParent(item());
}

// What the page shows above its rows is an item of its own; null for none.
QAccessibleInterface* AccessibleTable::header() const {
    auto* header = item().property("headerItem").value<QQuickItem*>();
    QAccessibleInterface* told = header ? QAccessible::queryAccessibleInterface(header) : nullptr;
    return told && !told->text(QAccessible::Name).isEmpty() ? told : nullptr;
}

int AccessibleTable::childCount() const {
    count();
    return static_cast<int>(_spoken.size()) + (header() ? 1 : 0);
}

QAccessibleInterface* AccessibleTable::child(int index) const {
    count();
    QAccessibleInterface* above = header();
    if (above && index == 0) return above;
    const int line = index - (above ? 1 : 0);
    return line >= 0 && line < _spoken.size() ? lineAt(_spoken[line]) : nullptr;
}

int AccessibleTable::indexOfChild(const QAccessibleInterface* child) const {
    QAccessibleInterface* above = header();
    if (above && child == above) return 0;
    const auto* line = dynamic_cast<const AccessibleLine*>(child);
    const auto place = line ? std::ranges::lower_bound(_spoken, lineOf(line->id())) : _spoken.end();
    if (place == _spoken.end() || *place != lineOf(line->id())) return -1;
    return static_cast<int>(std::distance(_spoken.begin(), place)) + (above ? 1 : 0);
}

// Of the lines alone that are on the screen interfaces are made.
QAccessibleInterface* AccessibleTable::childAt(int x, int y) const {
    QAccessibleInterface* above = header();
    if (above && above->rect().contains(x, y)) return above;
    count();
    const auto found = std::ranges::find_if(_spoken, [&](int line) { return rectOf(line).contains(x, y); });
    return found == _spoken.end() ? nullptr : lineAt(*found);
}

QAccessibleInterface* AccessibleTable::focusChild() const {
    const int line = currentLine();
    return isFocused(line) ? lineAt(line) : nullptr;
}

QString AccessibleTable::text(QAccessible::Text kind) const {
    return kind == QAccessible::Name ? item().property("title").toString() : QString();
}

QRect AccessibleTable::rect() const {
    return screenRect(item());
}

QAccessible::State AccessibleTable::state() const {
    QAccessible::State state;
    state.invisible = !isUsable();
    state.disabled = !isUsable();
    return state;
}

int AccessibleTable::currentLine() const {
    return item().property("currentIndex").toInt();
}

bool AccessibleTable::isFocused(int line) const {
    return line >= 0 && line == currentLine() && isUsable() && item().hasActiveFocus();
}

QQuickItem* AccessibleTable::delegateOf(int line) const {
    QQuickItem* delegate = nullptr;
    QMetaObject::invokeMethod(&item(), "itemAtIndex", Q_RETURN_ARG(QQuickItem*, delegate), Q_ARG(int, line));
    return delegate;
}

// Empty for what is not on the screen.
QRect AccessibleTable::rectOf(int line) const {
    const QQuickItem* delegate = isUsable() ? delegateOf(line) : nullptr;
    return delegate ? screenRect(*delegate).intersected(rect()) : QRect();
}

void AccessibleTable::focus(int line) {
    QMetaObject::invokeMethod(&item(), "placeFocus", Q_ARG(QVariant, line));
}

// On the screen, so that whoever looks on sees what is done.
void AccessibleTable::activate(int line) {
    QMetaObject::invokeMethod(&item(), "moveTo", Q_ARG(QVariant, line));
    model()->activate(line);
}

}  // namespace hosts::desktop
