// SPDX-License-Identifier: MIT
#include "hosts/desktop/model/find.h"

#include <utility>

#include "hosts/session/printable.h"

namespace hosts::desktop {

void Find::use(Search search, Follow follow) {
    _search = std::move(search);
    _follow = std::move(follow);
}

void Find::setText(const QString& text) {
    if (text == _text) return;
    _text = text;
    refresh();
    emit textChanged();
}

void Find::refresh() {
    beginResetModel();
    _hits = _isOpen && _search ? _search(_text.toStdString()) : std::vector<FindHit>();
    endResetModel();
}

QString Find::remark() const {
    if (!_hits.empty()) return {};
    return QString::fromStdString(remarkOnNoHits(!_text.trimmed().isEmpty()));
}

void Find::begin(const QString& typed) {
    if (!std::exchange(_isOpen, true)) emit openChanged();
    setText(typed);
}

void Find::escape() {
    _text.isEmpty() ? close() : setText({});
}

void Find::close() {
    if (!std::exchange(_isOpen, false)) return;
    setText({});
    emit openChanged();
}

// The page takes the keyboard only once this has let it go.
void Find::choose(int hit) {
    if (hit < 0 || hit >= rowCount()) return;
    const FindHit chosen = _hits[static_cast<std::size_t>(hit)];
    close();
    if (_follow) _follow(chosen);
}

int Find::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(_hits.size());
}

QVariant Find::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const FindHit& hit = _hits[static_cast<std::size_t>(index.row())];
    return QString::fromStdString(printable(role == PlaceRole ? hit.place : hit.text));
}

QHash<int, QByteArray> Find::roleNames() const {
    return {{TextRole, "text"}, {PlaceRole, "place"}};
}

}  // namespace hosts::desktop
