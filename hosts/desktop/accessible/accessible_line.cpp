// SPDX-License-Identifier: MIT
#include "hosts/desktop/accessible/accessible_line.h"

#include <utility>

namespace hosts::desktop {
namespace {

using Part = TableLine::Part;
using Kind = RowLook::Kind;

QAccessible::Role roleOfRow(const SpokenLine& row) {
    // Qt knows no role for a switch; a check box is told and used like one everywhere.
    if (row.look.on) return QAccessible::CheckBox;
    if (row.isView || row.look.kind == Kind::link) return QAccessible::Button;
    return row.look.isOneOfSeveral ? QAccessible::RadioButton : QAccessible::CheckBox;
}

bool isCheckable(QAccessible::Role role) {
    return role == QAccessible::CheckBox || role == QAccessible::RadioButton;
}

// What is told of a row again whenever it changes.
QAccessible::State changingState(const SpokenLine& row) {
    QAccessible::State state;
    state.checked = row.look.on.value_or(row.look.checked);
    state.disabled = !row.look.enabled;
    state.selected = row.isOpen;
    return state;
}

}  // namespace

AccessibleLine::AccessibleLine(AccessibleTable& table, int id) : _table(table), _id(id) {
    const SpokenLine now = spoken();
    _toldName = now.name;
    _toldDescription = now.description;
    _toldState = changingState(now);
}

SpokenLine AccessibleLine::spoken() const {
    TableModel* model = _table.model();
    return model ? model->spoken(line()) : SpokenLine();
}

QString AccessibleLine::text(QAccessible::Text kind) const {
    switch (kind) {
        case QAccessible::Name:
            return spoken().name;
        case QAccessible::Description:
            return spoken().description;
        default:
            return {};
    }
}

QAccessible::Role AccessibleLine::role() const {
    const SpokenLine now = spoken();
    if (now.part == Part::header) return QAccessible::Heading;
    if (now.part == Part::footer) return QAccessible::StaticText;
    return roleOfRow(now);
}

QAccessible::State AccessibleLine::state() const {
    const SpokenLine now = spoken();
    QAccessible::State state;
    state.invisible = !_table.isUsable();
    state.offscreen = rect().isEmpty();
    if (now.part != Part::row) return state;
    state.checkable = isCheckable(roleOfRow(now));
    state.checked = now.look.on.value_or(now.look.checked);
    state.disabled = !now.look.enabled || !_table.isUsable();
    state.selected = now.isOpen;
    state.focusable = _table.isUsable();
    state.focused = _table.isFocused(line());
    return state;
}

void* AccessibleLine::interface_cast(QAccessible::InterfaceType type) {
    const bool isAsked = type == QAccessible::ActionInterface && spoken().part == Part::row;
    return isAsked ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
}

QString AccessibleLine::useName() const {
    return isCheckable(role()) ? toggleAction() : pressAction();
}

QStringList AccessibleLine::actionNames() const {
    const QAccessible::State now = state();
    QStringList names;
    if (now.focusable && !now.disabled) names.append(useName());
    if (now.focusable) names.append(setFocusAction());
    return names;
}

void AccessibleLine::doAction(const QString& name) {
    if (!actionNames().contains(name)) return;
    name == setFocusAction() ? _table.focus(line()) : _table.activate(line());
}

void AccessibleLine::tellChange() {
    const SpokenLine now = spoken();
    if (std::exchange(_toldName, now.name) != now.name) {
        QAccessibleEvent event(this, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&event);
    }
    if (std::exchange(_toldDescription, now.description) != now.description) {
        QAccessibleEvent event(this, QAccessible::DescriptionChanged);
        QAccessible::updateAccessibility(&event);
    }
    const QAccessible::State state = changingState(now);
    QAccessible::State changed;
    changed.checked = state.checked != _toldState.checked;
    changed.disabled = state.disabled != _toldState.disabled;
    changed.selected = state.selected != _toldState.selected;
    _toldState = state;
    if (!changed.checked && !changed.disabled && !changed.selected) return;
    QAccessibleStateChangeEvent event(this, changed);
    QAccessible::updateAccessibility(&event);
}

}  // namespace hosts::desktop
