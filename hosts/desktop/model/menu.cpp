// SPDX-License-Identifier: MIT
#include "hosts/desktop/model/menu.h"

#include <utility>

namespace hosts::desktop {
namespace {

constexpr QChar accessSign = u'&';

QString withoutSign(QString label) {
    return label.remove(accessSign);
}

}  // namespace

void Menu::show(QString title, std::vector<Item> items, QPointF place) {
    beginResetModel();
    _title = std::move(title);
    _items = std::move(items);
    _place = place;
    endResetModel();
    emit openChanged();
}

void Menu::choose(int item) {
    if (item < 0 || item >= rowCount() || !_items[static_cast<std::size_t>(item)].isUsable) return;
    const auto act = _items[static_cast<std::size_t>(item)].act;
    close();
    act();
}

void Menu::close() {
    if (isOpen()) show({}, {}, {});
}

int Menu::usableBeside(int from, int step) const {
    const int count = rowCount();
    for (int i = 1; i <= count; ++i) {
        const int beside = ((from + i * step) % count + count) % count;
        if (_items[static_cast<std::size_t>(beside)].isUsable) return beside;
    }
    return from;
}

int Menu::itemOfLetter(const QString& letter) const {
    for (int i = 0; i < rowCount(); ++i) {
        const QString& label = _items[static_cast<std::size_t>(i)].label;
        const qsizetype sign = label.indexOf(accessSign);
        if (sign >= 0 && label.mid(sign + 1, 1).compare(letter, Qt::CaseInsensitive) == 0) return i;
    }
    return -1;
}

int Menu::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(_items.size());
}

QVariant Menu::data(const QModelIndex& index, int role) const {
    if (index.row() < 0 || index.row() >= rowCount()) return {};
    const Item& item = _items[static_cast<std::size_t>(index.row())];
    switch (role) {
        case LabelRole:
            return withoutSign(item.label);
        case AccessRole:
            return item.label.indexOf(accessSign);
        case KeysRole:
            return item.keys;
        case UsableRole:
            return item.isUsable;
        default:
            return {};
    }
}

QHash<int, QByteArray> Menu::roleNames() const {
    return {{LabelRole, "label"}, {AccessRole, "access"}, {KeysRole, "keys"}, {UsableRole, "usable"}};
}

}  // namespace hosts::desktop
