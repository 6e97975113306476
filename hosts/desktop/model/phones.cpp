// SPDX-License-Identifier: MIT
#include "hosts/desktop/model/phones.h"

#include <QDir>
#include <utility>

#include "hosts/phones/far/ssh_address.h"
#include "hosts/session/printable.h"

namespace hosts::desktop {
namespace {

QString shown(const QString& text) {
    return QString::fromStdString(printable(text.toStdString()));
}

}  // namespace

QString phoneNamed(const QString& text) {
    if (text.startsWith(QLatin1String("file:"))) {
        const QUrl address(text);
        return address.host().isEmpty() || address.host() == QLatin1String("localhost") ? address.path() : QString();
    }
    const bool isOtherAddress = text.contains(QLatin1String("://")) && !namesSshAddress(text.toStdString());
    return isOtherAddress ? QString() : text;
}

void Phones::use(KnownPhone current, Does does) {
    _current = std::move(current);
    _current.name = shown(_current.name);
    _does = std::move(does);
    emit listed();
}

void Phones::begin() {
    show(false, {});
}

void Phones::askForName() {
    show(true, {});
}

void Phones::show(bool isAsking, const QString& problem) {
    beginResetModel();
    _phones = {{{}, tr("Sample Phone")}};
    if (!_current.folder.isEmpty()) _phones.push_back(_current);
    for (KnownPhone& phone : _does.known ? _does.known() : std::vector<KnownPhone>()) {
        if (phone.folder != _current.folder) _phones.push_back(std::move(phone));
    }
    endResetModel();
    _isOpen = true;
    _isAsking = isAsking;
    _problem = shown(problem);
    emit openChanged();
}

void Phones::close() {
    if (!std::exchange(_isOpen, false)) return;
    _isAsking = false;
    emit openChanged();
}

void Phones::choose(int phone) {
    if (phone < 0 || phone >= rowCount()) return;
    const KnownPhone chosen = _phones[static_cast<std::size_t>(phone)];
    if (chosen.folder == _current.folder) return close();
    openFolder(chosen.folder);
}

void Phones::chooseFolder() {
    if (_does.chooseFolder) _does.chooseFolder();
}

void Phones::openFolder(const QString& folder) {
    const QString problem = _does.openPhone ? _does.openPhone(folder) : QString();
    problem.isEmpty() ? close() : show(_isAsking, problem);
}

void Phones::openNamed(const QString& typed) {
    QString folder = phoneNamed(typed.trimmed());
    if (folder.startsWith(QLatin1String("~/"))) folder.replace(0, 1, QDir::homePath());
    if (folder.isEmpty())
        return show(_isAsking, tr("Neither a folder of this machine nor a phone's address: %1").arg(typed));
    openFolder(folder);
}

void Phones::openAddresses(const QList<QUrl>& addresses) {
    for (const QUrl& address : addresses)
        openNamed(address.toString(QUrl::FullyEncoded));
}

int Phones::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(_phones.size());
}

QVariant Phones::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const KnownPhone& phone = _phones[static_cast<std::size_t>(index.row())];
    if (role == CurrentRole) return phone.folder == _current.folder;
    if (role == NameRole) return shown(phone.name);
    return phone.folder.isEmpty() ? tr("To try things out: no device is affected") : shown(phone.folder);
}

QHash<int, QByteArray> Phones::roleNames() const {
    return {{NameRole, "name"}, {FolderRole, "folder"}, {CurrentRole, "current"}};
}

}  // namespace hosts::desktop
