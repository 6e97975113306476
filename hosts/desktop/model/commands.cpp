// SPDX-License-Identifier: MIT
#include "hosts/desktop/model/commands.h"

#include <QKeySequence>
#include <iterator>
#include <utility>

namespace hosts::desktop {
namespace {

struct KeyUse {
    /// Empty for what is not in the menu; "&" stands before its access key.
    const char* label = "";
    /// A command's as Qt writes them, with "; " between; others as they are told.
    const char* keys = "";
    /// Empty for what has no keys.
    const char* meaning = "";
    Commands::Command command = Commands::None;
    Commands::Scope scope = Commands::OnPages;
};

// clang-format off
constexpr KeyUse keyUses[] = {
    {"", "Up, Down, Home, End", "Go from row to row"},
    {"", "Left, Right", "Where there are two columns, go from one to the other"},
    {"", "Page Up, Page Down", "Go a page up or down"},
    {"", "Space, Enter", "Do what a touch of the row does; move its switch"},
    {"", "Menu, Shift+F10", "The row's own menu"},
    {"", "Any letter", "Find on all pages or, where applications are listed, go to the one of that name"},
    {"", "Escape, Alt+Left", "Back to the page before"},
    {"", "Tab, Shift+Tab", "Go to the buttons, and to the rows again"},
    {"&Find…", "Ctrl+F", "Find on all pages", Commands::Find},
    {"&Undo", "Ctrl+Z", "Undo the last change", Commands::Undo},
    {"&Redo", "Ctrl+Shift+Z", "Do again what was undone", Commands::Redo},
    {"Reset &Page", "", "", Commands::ResetPage},
    {"Re&load", "F5", "Load the page's rows again", Commands::Reload},
    {"", "Ctrl++; Ctrl+=", "Larger text; Ctrl and the wheel do so too", Commands::LargerText, Commands::Everywhere},
    {"", "Ctrl+-", "Smaller text", Commands::SmallerText, Commands::Everywhere},
    {"", "Ctrl+0", "Text of the usual size", Commands::UsualText, Commands::Everywhere},
    {"&Keyboard Shortcuts", "F1; Ctrl+?", "Show these keys", Commands::ShowKeys},
    {"&Open Phone…", "Ctrl+O", "Open another phone", Commands::OpenPhone, Commands::OutsideComposers},
    {"&About Trivel 3", "", "", Commands::About},
    {"", "F10", "Open the menu", Commands::OpenMenu},
    {"", "Ctrl+Enter", "Post, in a post"},
    {"", "Ctrl+Q; Ctrl+W", "Close the window", Commands::Close, Commands::Everywhere},
};
// clang-format on

QStringList sequencesOf(const KeyUse& use) {
    if (use.command == Commands::None) return {};
    return QString::fromUtf8(use.keys).split(QStringLiteral("; "), Qt::SkipEmptyParts);
}

QString keysOf(const KeyUse& use) {
    if (use.command == Commands::None) return QString::fromUtf8(use.keys);
    QStringList keys;
    for (const QString& sequence : sequencesOf(use))
        keys.append(QKeySequence(sequence).toString(QKeySequence::NativeText));
    return keys.join(QStringLiteral(", "));
}

}  // namespace

void Commands::use(Command command, std::function<void()> run, std::function<bool()> can) {
    _acts.insert_or_assign(command, Act{std::move(run), std::move(can)});
}

void Commands::run(int command) {
    const auto act = _acts.find(static_cast<Command>(command));
    if (act != _acts.end()) act->second.run();
}

void Commands::runLine(int line) {
    run(keyUses[line].command);
}

std::vector<Menu::Item> Commands::menuItems() {
    std::vector<Menu::Item> items;
    for (const KeyUse& use : keyUses) {
        if (!*use.label) continue;
        const auto act = _acts.find(use.command);
        const bool can = act != _acts.end() && (!act->second.can || act->second.can());
        const QString keys = sequencesOf(use).value(0);
        items.push_back({QString::fromUtf8(use.label), QKeySequence(keys).toString(QKeySequence::NativeText), can,
                         [this, command = use.command] { run(command); }});
    }
    return items;
}

QString Commands::version() {
    return QStringLiteral(TRIVEL3_VERSION);
}

void Commands::showSheet(Sheet sheet) {
    if (std::exchange(_sheet, sheet) != sheet) emit sheetChanged();
}

int Commands::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(std::size(keyUses));
}

QVariant Commands::data(const QModelIndex& index, int role) const {
    if (index.row() < 0 || index.row() >= rowCount()) return {};
    const KeyUse& use = keyUses[index.row()];
    switch (role) {
        case SequencesRole:
            return sequencesOf(use);
        case ScopeRole:
            return use.scope;
        case KeysRole:
            return keysOf(use);
        case MeaningRole:
            return QString::fromUtf8(use.meaning);
        default:
            return {};
    }
}

QHash<int, QByteArray> Commands::roleNames() const {
    return {{SequencesRole, "sequences"}, {ScopeRole, "scope"}, {KeysRole, "keys"}, {MeaningRole, "meaning"}};
}

}  // namespace hosts::desktop
