// SPDX-License-Identifier: MIT
#include "hosts/desktop/accessible/accessible_tree.h"

#include <QAccessibleObject>
#include <QQuickWindow>
#include <algorithm>
#include <array>
#include <utility>

#include "hosts/desktop/accessible/accessible_table.h"

namespace hosts::desktop {
namespace {

/// The whole content, a page or a composer: something that can lie beneath another, and is then not told.
class AccessibleStage : public QAccessibleObject {
public:
    AccessibleStage(QQuickItem* item, QAccessible::Role role) : QAccessibleObject(item), _role(role) {}

    bool isBeneath() const { return !item().isEnabled(); }

    QWindow* window() const override { return item().window(); }
    QAccessibleInterface* parent() const override { return accessibleParent(item()); }
    int childCount() const override { return static_cast<int>(accessibleChildren(item()).size()); }
    QAccessibleInterface* child(int index) const override { return accessibleChildren(item()).value(index); }
    int indexOfChild(const QAccessibleInterface* child) const override {
        return static_cast<int>(accessibleChildren(item()).indexOf(const_cast<QAccessibleInterface*>(child)));
    }
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;
    QRect rect() const override { return screenRect(item()); }
    QAccessible::Role role() const override { return _role; }
    QAccessible::State state() const override;
    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? item().property("title").toString() : QString();
    }

private:
    QQuickItem& item() const { return *static_cast<QQuickItem*>(object()); }

    QAccessible::Role _role;
};

QAccessibleInterface* AccessibleStage::childAt(int x, int y) const {
    const auto children = accessibleChildren(item());
    const auto found = std::ranges::find_if(children, [&](auto* child) { return child->rect().contains(x, y); });
    return found == children.end() ? nullptr : *found;
}

QAccessibleInterface* AccessibleStage::focusChild() const {
    for (QQuickItem* at = item().window()->activeFocusItem(); at && at != &item(); at = at->parentItem()) {
        QAccessibleInterface* told = QAccessible::queryAccessibleInterface(at);
        if (!told) continue;
        QAccessibleInterface* within = told->focusChild();
        return within ? within : told;
    }
    return nullptr;
}

QAccessible::State AccessibleStage::state() const {
    QAccessible::State state;
    state.modal = _role == QAccessible::Dialog;
    state.invisible = isBeneath() || !item().isVisible();
    state.disabled = isBeneath();
    return state;
}

/// Something to choose from a menu. Qt's own interface does not say of an item that it is greyed.
class AccessibleMenuEntry : public QAccessibleObject, public QAccessibleActionInterface {
public:
    explicit AccessibleMenuEntry(QQuickItem* item) : QAccessibleObject(item) {}

    QWindow* window() const override { return item().window(); }
    QAccessibleInterface* parent() const override { return accessibleParent(item()); }
    int childCount() const override { return 0; }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QRect rect() const override { return screenRect(item()); }
    QAccessible::Role role() const override { return QAccessible::MenuItem; }
    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name          ? item().property("label").toString()
               : kind == QAccessible::Description ? item().property("keys").toString()
                                                  : QString();
    }
    QAccessible::State state() const override {
        QAccessible::State state;
        state.disabled = !item().isEnabled();
        state.focusable = item().isEnabled();
        state.focused = item().hasActiveFocus();
        return state;
    }
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
    }
    QStringList actionNames() const override {
        return item().isEnabled() ? QStringList{pressAction(), setFocusAction()} : QStringList();
    }
    void doAction(const QString& name) override {
        if (!actionNames().contains(name)) return;
        QMetaObject::invokeMethod(&item(), name == pressAction() ? "chosen" : "takeFocus");
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    QQuickItem& item() const { return *static_cast<QQuickItem*>(object()); }
};

// By the names of their QML files: the class is all that is known of an item that is still being made.
QAccessibleInterface* makeInterface(const QString& className, QObject* object) {
    constexpr std::array stages{
        std::pair{"Shell_QML", QAccessible::Pane},           std::pair{"PageItem_QML", QAccessible::Pane},
        std::pair{"ComposerSheet_QML", QAccessible::Dialog}, std::pair{"FindSheet_QML", QAccessible::Dialog},
        std::pair{"PhonesSheet_QML", QAccessible::Dialog},   std::pair{"SheetQuestion_QML", QAccessible::Dialog},
        std::pair{"KeysSheet_QML", QAccessible::Dialog},     std::pair{"AboutSheet_QML", QAccessible::Dialog},
        std::pair{"PopupMenu_QML", QAccessible::PopupMenu}};
    auto* item = qobject_cast<QQuickItem*>(object);
    if (!item) return nullptr;
    if (className.startsWith(QLatin1String("TablePage_QML"))) return new AccessibleTable(item);
    if (className.startsWith(QLatin1String("MenuEntry_QML"))) return new AccessibleMenuEntry(item);
    for (const auto& [name, role] : stages) {
        if (className.startsWith(QLatin1String(name))) return new AccessibleStage(item, role);
    }
    return nullptr;
}

void collect(const QQuickItem& within, QList<QAccessibleInterface*>& found) {
    for (QQuickItem* child : within.childItems()) {
        if (!child->isVisible()) continue;
        QAccessibleInterface* told = QAccessible::queryAccessibleInterface(child);
        const auto* stage = dynamic_cast<AccessibleStage*>(told);
        if (stage && stage->isBeneath()) continue;
        told ? found.append(told) : collect(*child, found);
    }
}

// Things in one bar stand side by side, whatever their heights.
std::pair<int, int> readingPlace(const QAccessibleInterface* told) {
    const QRect rect = told->rect();
    return {rect.center().y(), rect.x()};
}

}  // namespace

void installAccessibleTree() {
    QAccessible::installFactory(makeInterface);
}

QList<QAccessibleInterface*> accessibleChildren(const QQuickItem& item) {
    QList<QAccessibleInterface*> found;
    collect(item, found);
    std::ranges::stable_sort(found, {}, readingPlace);
    return found;
}

QAccessibleInterface* accessibleParent(const QQuickItem& item) {
    for (QQuickItem* at = item.parentItem(); at; at = at->parentItem()) {
        if (QAccessibleInterface* told = QAccessible::queryAccessibleInterface(at)) return told;
    }
    return QAccessible::queryAccessibleInterface(item.window());
}

QRect screenRect(const QQuickItem& item) {
    const QRectF within = item.mapRectToScene({QPointF(0, 0), item.size()});
    const QQuickWindow* window = item.window();
    return window ? QRectF(window->mapToGlobal(within.topLeft()), within.size()).toRect() : QRect();
}

}  // namespace hosts::desktop
