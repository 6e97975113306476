// SPDX-License-Identifier: MIT
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QAbstractListModel>
#include <functional>
#include <map>
#include <vector>

#include "hosts/desktop/model/menu.h"

namespace hosts::desktop {

/// All that keys do in the window, and what its menu offers, from one table: a line of the model is something that some
/// keys do. The keys of commands are the window's; all others are those of what has the focus.
class Commands : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The navigation has the commands")
    /// What lies over the pages of what is told here.
    Q_PROPERTY(Sheet sheet READ sheet NOTIFY sheetChanged)
    /// The program's name, version and licence.
    Q_PROPERTY(QString version READ version CONSTANT)

public:
    enum Command {
        None,
        Find,
        Undo,
        Redo,
        ResetPage,
        Reload,
        LargerText,
        SmallerText,
        UsualText,
        ShowKeys,
        OpenPhone,
        About,
        OpenMenu,
        Close
    };
    Q_ENUM(Command)
    /// Where a command's keys count: on the pages alone, wherever no composer is open, or everywhere.
    enum Scope { OnPages, OutsideComposers, Everywhere };
    Q_ENUM(Scope)
    enum Sheet { NoSheet, KeysSheet, AboutSheet };
    Q_ENUM(Sheet)
    enum Role {
        SequencesRole = Qt::UserRole,  ///< the keys of a command
        ScopeRole,
        KeysRole,    ///< all keys as they are told
        MeaningRole  ///< empty for what is in the menu alone
    };

    /// From here on a command does what `run` does; `can` says whether there is anything to be done, always without it.
    void use(Command command, std::function<void()> run, std::function<bool()> can = nullptr);

    /// Nothing for a command that nobody has taken on.
    Q_INVOKABLE void run(int command);
    /// The command of the model's line.
    Q_INVOKABLE void runLine(int line);

    std::vector<Menu::Item> menuItems();

    Sheet sheet() const { return _sheet; }
    static QString version();
    void showSheet(Sheet sheet);
    Q_INVOKABLE void closeSheet() { showSheet(NoSheet); }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

signals:
    void sheetChanged();

private:
    struct Act {
        std::function<void()> run;
        std::function<bool()> can;
    };

    std::map<Command, Act> _acts;
    Sheet _sheet = NoSheet;
};

}  // namespace hosts::desktop
