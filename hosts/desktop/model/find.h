// SPDX-License-Identifier: MIT
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QAbstractListModel>
#include <functional>
#include <string>
#include <vector>

#include "hosts/session/finder.h"

namespace hosts::desktop {

/// What the user looks for on all pages, and what has been found of it, the best first.
class Find : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The navigation has the search")
    Q_PROPERTY(bool open READ isOpen NOTIFY openChanged)
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    /// What to say in place of hits; empty while there are some.
    Q_PROPERTY(QString remark READ remark NOTIFY textChanged)

public:
    enum Role { TextRole = Qt::UserRole, PlaceRole };

    using Search = std::function<std::vector<FindHit>(const std::string& text)>;
    using Follow = std::function<void(const FindHit& hit)>;

    /// From here on it answers by `search`, and a hit that the user chooses goes to `follow`. Without them it finds
    /// nothing.
    void use(Search search, Follow follow);

    bool isOpen() const { return _isOpen; }
    const QString& text() const { return _text; }
    void setText(const QString& text);
    QString remark() const;

    /// What is found may be another now.
    void refresh();

    /// Begins with what has been typed already.
    Q_INVOKABLE void begin(const QString& typed);
    /// Drops what was typed or, where that is nothing, closes.
    Q_INVOKABLE void escape();
    Q_INVOKABLE void close();
    /// Closes, and leads to the hit.
    Q_INVOKABLE void choose(int hit);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

signals:
    void openChanged();
    void textChanged();

private:
    Search _search;
    Follow _follow;
    bool _isOpen = false;
    QString _text;
    std::vector<FindHit> _hits;
};

}  // namespace hosts::desktop
