// SPDX-License-Identifier: MIT
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QAbstractListModel>
#include <QList>
#include <QString>
#include <QUrl>
#include <functional>
#include <vector>

namespace hosts::desktop {

/// A phone that a window can be opened on.
struct KnownPhone {
    QString folder;  ///< empty for the sample phone
    QString name;

    bool operator==(const KnownPhone&) const = default;
};

/// The phone that the window shows, and the page of those that it can open, each in a window of its own: the sample
/// phone, those that were opened last, and any folder or address.
class Phones : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The navigation has the phones")
    /// What the phone of this window is called; empty while there is none.
    Q_PROPERTY(QString name READ name NOTIFY listed)
    Q_PROPERTY(bool open READ isOpen NOTIFY openChanged)
    /// Whether the user is to type a phone's path or address.
    Q_PROPERTY(bool asking READ isAsking NOTIFY openChanged)
    /// What is wrong with the folder that was asked for last; empty for nothing.
    Q_PROPERTY(QString problem READ problem NOTIFY openChanged)

public:
    enum Role { NameRole = Qt::UserRole, FolderRole, CurrentRole };

    /// What the page asks for.
    struct Does {
        /// Opens the phone, and gives why that did not work; empty where it did.
        std::function<QString(const QString& folder)> openPhone;
        /// Has the user choose a folder, by and by.
        std::function<void()> chooseFolder;
        /// Those that were opened last, the last one first.
        std::function<std::vector<KnownPhone>()> known;
    };

    /// From here on; `current` is the phone of this window.
    void use(KnownPhone current, Does does);

    const QString& name() const { return _current.name; }
    bool isOpen() const { return _isOpen; }
    bool isAsking() const { return _isAsking; }
    const QString& problem() const { return _problem; }

    Q_INVOKABLE void begin();
    Q_INVOKABLE void close();
    Q_INVOKABLE void choose(int phone);
    Q_INVOKABLE void chooseFolder();
    /// Has the user type a path or an address: there are phones that nothing can choose.
    Q_INVOKABLE void askForName();
    /// A phone's path or address, as a user types it.
    Q_INVOKABLE void openNamed(const QString& typed);
    Q_INVOKABLE void openAddresses(const QList<QUrl>& addresses);

    /// Empty for the sample phone.
    void openFolder(const QString& folder);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

signals:
    void listed();
    void openChanged();

private:
    void show(bool isAsking, const QString& problem);

    KnownPhone _current;
    Does _does;
    bool _isOpen = false;
    bool _isAsking = false;
    QString _problem;
    std::vector<KnownPhone> _phones;
};

/// The phone that is named by a path, by the address of a file of this machine, or by that of a phone that is reached
/// by SSH. Empty for any other address.
QString phoneNamed(const QString& text);

}  // namespace hosts::desktop
