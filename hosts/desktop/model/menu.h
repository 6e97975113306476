// SPDX-License-Identifier: MIT
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QAbstractListModel>
#include <QPointF>
#include <QString>
#include <functional>
#include <vector>

namespace hosts::desktop {

/// What the user can choose from a menu, of which the window has one at a time.
class Menu : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The navigation has the menu")
    Q_PROPERTY(bool open READ isOpen NOTIFY openChanged)
    /// What it is about, for those who cannot see where it is.
    Q_PROPERTY(QString title READ title NOTIFY openChanged)
    /// Where it begins, in the window's points.
    Q_PROPERTY(QPointF place READ place NOTIFY openChanged)

public:
    enum Role {
        LabelRole = Qt::UserRole,
        AccessRole,  ///< the place of its access key's letter in the label; -1 for none
        KeysRole,    ///< what does the same without the menu; empty for nothing
        UsableRole
    };

    struct Item {
        /// With "&" before the letter that chooses it.
        QString label;
        QString keys;
        bool isUsable = true;
        /// Called with the menu gone.
        std::function<void()> act;
    };

    void show(QString title, std::vector<Item> items, QPointF place);

    bool isOpen() const { return !_items.empty(); }
    const QString& title() const { return _title; }
    QPointF place() const { return _place; }

    /// Does what the item says, and nothing where that is not usable now.
    Q_INVOKABLE void choose(int item);
    Q_INVOKABLE void close();
    /// The usable item after `from`, going by the step and round the ends; `from` where there is no other.
    Q_INVOKABLE int usableBeside(int from, int step) const;
    /// The item that the letter chooses; -1 for none.
    Q_INVOKABLE int itemOfLetter(const QString& letter) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

signals:
    void openChanged();

private:
    QString _title;
    std::vector<Item> _items;
    QPointF _place;
};

}  // namespace hosts::desktop
