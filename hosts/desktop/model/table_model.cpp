// SPDX-License-Identifier: MIT
#include "hosts/desktop/model/table_model.h"

#include <QStringList>
#include <algorithm>
#include <iterator>

#include "hosts/desktop/drawing/view_handle.h"
#include "hosts/session/defaults.h"
#include "hosts/session/finder.h"
#include "hosts/session/title_path.h"
#include "platform/list/table_cell.h"

namespace hosts::desktop {
namespace {

using Part = TableLine::Part;

const char* lineKind(Part part, const platform::PSSpecifier* specifier) {
    if (part == Part::header) return "header";
    if (part == Part::footer) return "footer";
    return specifier ? kindName(rowKind(*specifier)) : "view";
}

bool isApplication(const TableLine& line) {
    return line.isRow() && line.specifier && isApplicationRow(*line.specifier);
}

constexpr int worstFit = 3;

// 0 for a name that begins with what was typed, 1 for one that has a word which does, 2 for one that holds it.
int fitOfName(const QString& name, const QString& typed) {
    int best = worstFit;
    for (qsizetype at = name.indexOf(typed, 0, Qt::CaseInsensitive); at >= 0;
         at = name.indexOf(typed, at + 1, Qt::CaseInsensitive)) {
        best = std::min(best, at == 0 ? 0 : name.at(at - 1).isLetterOrNumber() ? 2 : 1);
    }
    return best;
}

std::ptrdiff_t offset(std::size_t position) {
    return static_cast<std::ptrdiff_t>(position);
}

// Whether both stand for the same thing, wherever that is now.
bool standForSame(const TableLine& one, const TableLine& other) {
    if (one.part != other.part || one.specifier != other.specifier) return false;
    return one.specifier != nullptr || one.path == other.path;
}

TableLine makeLine(Part part, platform::NSIndexPath path, const platform::PSSpecifier* specifier) {
    TableLine line;
    line.part = part;
    line.kind = lineKind(part, specifier);
    line.path = path;
    line.specifier = specifier;
    return line;
}

// The lines of the table as it is now. `list` is the page when it is a list of rows, else null.
std::vector<TableLine> tableLines(platform::UITableView& table, const platform::PSListController* list) {
    std::vector<TableLine> lines;
    platform::UITableViewDataSource* source = table.dataSource();
    if (!source) return lines;
    const std::size_t sections = source->numberOfSectionsInTableView(table);
    for (std::size_t section = 0; section < sections; ++section) {
        const platform::PSSpecifier* group = list ? list->groupSpecifier(section).get() : nullptr;
        lines.push_back(makeLine(Part::header, {section, 0}, group));
        const std::size_t rows = source->tableView_numberOfRowsInSection(table, section);
        for (std::size_t row = 0; row < rows; ++row) {
            const platform::NSIndexPath path{section, row};
            lines.push_back(makeLine(Part::row, path, list ? list->specifierAtIndexPath(path).get() : nullptr));
        }
        lines.push_back(makeLine(Part::footer, {section, rows}, group));
    }
    return lines;
}

}  // namespace

QString spokenTexts(const platform::UIView& view) {
    QStringList texts;
    for (const std::string& text : textsIn(view))
        texts.append(QString::fromStdString(text).replace(u'\n', u' '));
    return texts.join(QStringLiteral(", "));
}

TableModel::TableModel(platform::UITableView& table, platform::PSListController* list, const Defaults* defaults)
    : _table(&table), _list(list), _defaults(defaults) {
    rebuild(false);
    if (_list) _list->setTableHost(this);
}

TableModel::~TableModel() {
    letGo();
}

void TableModel::letGo() {
    if (_list) _list->setTableHost(nullptr);
    _list = nullptr;
    _table = nullptr;
}

int TableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(_lines.size());
}

QHash<int, QByteArray> TableModel::roleNames() const {
    return {{KindRole, "kind"},
            {LineIdRole, "lineId"},
            {TextRole, "text"},
            {PictureRole, "picture"},
            {UsableRole, "usable"},
            {CheckedRole, "marked"},
            {OnRole, "isOn"},
            {DisclosureRole, "leads"},
            {InsetRole, "inset"},
            {AccessoryWidthRole, "accessoryWidth"},
            {RowHeightRole, "rowHeight"},
            {ChangedRole, "isChanged"},
            {TreeRole, "tree"},
            {FirstRole, "first"},
            {StartsRole, "starts"},
            {LastRole, "last"},
            {OpenRole, "isOpen"},
            {BareRole, "bare"},
            {AnimatedRole, "animated"}};
}

QVariant TableModel::data(const QModelIndex& index, int role) const {
    if (!isLine(index.row())) return {};
    const auto position = static_cast<std::size_t>(index.row());
    TableLine& line = lineAt(index.row());
    switch (role) {
        case KindRole:
            return QString::fromLatin1(line.kind);
        case LineIdRole:
            return line.id;
        case FirstRole:
            return line.path.section == 0;
        case StartsRole:
            return isStart(position);
        case LastRole:
            return isLast(position);
        case OpenRole:
            return line.isRow() && line.specifier && line.specifier == _open;
        case BareRole:
            return isBare(position);
        case AnimatedRole:
            return line.isAnimated;
        default:
            return line.isRow() ? rowData(line, role) : role == TextRole ? QVariant(sectionText(line)) : QVariant();
    }
}

QVariant TableModel::rowData(TableLine& line, int role) const {
    static const LiveRow nothing;
    const LiveRow* shown = liveRow(line);
    const LiveRow* row = shown ? shown : &nothing;
    switch (role) {
        case TextRole:
            return line.isView() && row->cell ? spokenTexts(*row->cell) : QString::fromStdString(row->look.label);
        case PictureRole:
            return QVariant::fromValue(ImageHandle{row->look.icon});
        case UsableRole:
            return row->look.enabled;
        case CheckedRole:
            return row->look.checked;
        case OnRole:
            return row->look.on.value_or(false);
        case DisclosureRole:
            return row->look.leadsOn();
        case InsetRole:
            return row->look.labelInset;
        case AccessoryWidthRole:
            return row->look.accessoryWidth;
        case RowHeightRole:
            return row->look.height;
        case ChangedRole:
            return row->look.isChanged;
        case TreeRole:
            return QVariant::fromValue(ViewHandle{row->cell, row->revision});
        default:
            return {};
    }
}

QString TableModel::sectionText(const TableLine& line) const {
    if (!_table) return {};
    platform::UITableViewDataSource& source = *_table->dataSource();
    const auto text = line.part == Part::header ? source.tableView_titleForHeaderInSection(*_table, line.path.section)
                                                : source.tableView_titleForFooterInSection(*_table, line.path.section);
    return QString::fromStdString(text.value_or(std::string()));
}

bool TableModel::isStart(std::size_t line) const {
    return _lines[line].isRow() && !isRowAt(line - 1);
}

bool TableModel::isLast(std::size_t line) const {
    return _lines[line].isRow() && !isRowAt(line + 1);
}

bool TableModel::isBare(std::size_t line) const {
    return _lines[line].part == Part::footer && !isRowAt(line - 1);
}

bool TableModel::isRowAt(std::size_t line) const {
    return line < _lines.size() && _lines[line].isRow();
}

LiveRow* TableModel::liveRow(TableLine& line) const {
    if (!line.live && _table) produce(line);
    return line.live.get();
}

// In the midst of a change, lines may not have been told their new places yet.
std::optional<platform::NSIndexPath> TableModel::placeOf(const TableLine& line) const {
    if (!_list || _list->specifierAtIndexPath(line.path).get() == line.specifier) return line.path;
    for (const TableLine& each : tableLines(*_table, _list)) {
        if (each.isRow() && each.specifier == line.specifier) return each.path;
    }
    return std::nullopt;
}

void TableModel::produce(TableLine& line) const {
    const auto path = placeOf(line);
    auto cell = path ? _table->produceCellForRowAtIndexPath(*path) : nullptr;
    if (!cell) return;
    auto live = std::make_unique<LiveRow>();
    live->look = RowLook::of(*cell, _defaults);
    live->revision = line.live ? line.live->revision + 1 : 0;
    live->cell = std::move(cell);
    line.live = std::move(live);
}

void TableModel::lineLeft(int lineId) {
    auto line = std::ranges::find(_lines, lineId, &TableLine::id);
    if (line == _lines.end() || !line->live) return;
    if (_table && line->isView()) _table->enqueueReusableCell(line->live->cell);
    line->live.reset();
}

int TableModel::rowBeside(int line, int step) const {
    int beside = line + step;
    while (isLine(beside) && !lineAt(beside).isRow())
        beside += step > 0 ? 1 : -1;
    return isLine(beside) ? beside : -1;
}

int TableModel::lineOfRow(platform::NSIndexPath path) const {
    const auto line =
        std::ranges::find_if(_lines, [path](const TableLine& each) { return each.isRow() && each.path == path; });
    return line == _lines.end() ? -1 : static_cast<int>(std::distance(_lines.begin(), line));
}

std::optional<TableModel::RowSetting> TableModel::settingAt(int line) const {
    if (!isRow(line)) return std::nullopt;
    RowSetting setting{lookOf(lineAt(line)).label, std::nullopt};
    const auto row = _list ? _list->specifierAtIndexPath(lineAt(line).path) : nullptr;
    if (row && _defaults) setting.key = _defaults->settingOf(*row);
    return setting;
}

bool TableModel::listsApplications() const {
    return std::ranges::any_of(_lines, isApplication);
}

int TableModel::type(const QString& typed) {
    const int line = applicationNamed(typed);
    _typed = typed;
    _isTypedInVain = line < 0;
    emit typedChanged();
    return line;
}

void TableModel::endTyping() {
    if (_typed.isEmpty()) return;
    _typed.clear();
    emit typedChanged();
}

int TableModel::applicationNamed(const QString& typed) const {
    int best = -1;
    int bestFit = worstFit;
    for (std::size_t i = 0; i < _lines.size() && bestFit > 0 && !typed.isEmpty(); ++i) {
        if (!isApplication(_lines[i])) continue;
        const int fit = fitOfName(QString::fromStdString(_lines[i].specifier->name()), typed);
        if (fit >= bestFit) continue;
        best = static_cast<int>(i);
        bestFit = fit;
    }
    return best;
}

bool TableModel::says(int line) const {
    return isLine(line) && (lineAt(line).isRow() || !sectionText(lineAt(line)).isEmpty());
}

SpokenLine TableModel::spoken(int line) const {
    if (!isLine(line)) return {};
    const TableLine& told = lineAt(line);
    if (!told.isRow()) return {told.part, false, false, sectionText(told), {}, {}};
    const auto position = static_cast<std::size_t>(line);
    const bool isOpen = told.specifier && told.specifier == _open;
    SpokenLine spoken{told.part, told.isView(), isOpen, {}, {}, lookOf(told)};
    QStringList about(footerBelow(position));
    if (spoken.look.isChanged) about.prepend(tr("Not at its default."));
    spoken.description = about.join(u' ').trimmed();
    QStringList texts{QString::fromStdString(spoken.look.label)};
    for (const std::string& detail : spoken.look.details)
        texts.append(QString::fromStdString(detail).replace(u'\n', u' '));
    spoken.name = texts.join(QStringLiteral(", "));
    return spoken;
}

// The cell of a row that is not on the screen is produced for the answer alone.
RowLook TableModel::lookOf(const TableLine& line) const {
    if (line.live) return line.live->look;
    const auto path = _table ? placeOf(line) : std::nullopt;
    const auto cell = path ? _table->produceCellForRowAtIndexPath(*path) : nullptr;
    if (!cell) return {};
    const RowLook look = RowLook::of(*cell, _defaults);
    if (line.isView()) _table->enqueueReusableCell(cell);
    return look;
}

QString TableModel::footerBelow(std::size_t line) const {
    if (!isLast(line) || line + 1 == _lines.size()) return {};
    return sectionText(_lines[line + 1]);
}

void TableModel::activate(int line) {
    if (!isLine(line) || !lineAt(line).isRow()) return;
    const RowLook look = lookOf(lineAt(line));
    if (!look.enabled) return;
    look.on ? moveSwitch(line, !*look.on) : tap(line);
}

void TableModel::tap(int line) {
    if (!_table || !isLine(line) || !lineAt(line).isRow()) return;
    const int id = lineAt(line).id;
    noteAct({id, std::nullopt});
    if (!mayFollow(lineAt(line))) return;
    const auto touched = std::ranges::find(_lines, id, &TableLine::id);
    if (touched == _lines.end()) return;
    _table->touchRowAtIndexPath(touched->path);
    takeLooks(0);
}

bool TableModel::mayFollow(const TableLine& line) const {
    const bool leads = line.specifier && line.specifier->isEnabled() && isPageLink(*line.specifier);
    return !leads || !_mayFollow || _mayFollow(*line.specifier);
}

void TableModel::markOpen(const platform::PSSpecifier* link) {
    if (_open == link) return;
    _open = link;
    if (!_lines.empty()) notify(0, _lines.size() - 1, {OpenRole});
}

void TableModel::moveSwitch(int line, bool on) {
    if (!_table || !isLine(line)) return;
    const LiveRow* row = liveRow(lineAt(line));
    // Held here: what the page does with the change may take the row away.
    auto cell = row ? std::dynamic_pointer_cast<platform::PSTableCell>(row->cell) : nullptr;
    if (!cell) return;
    const int id = lineAt(line).id;
    noteAct({id, on});
    lineAt(line).isAnimated = true;
    cell->userMovedSwitch(on);
    takeLooks(id);
}

void TableModel::noteAct(const RowAct& act) {
    endTyping();
    _act = act;
    emit acted();
}

bool TableModel::repeat(const RowAct& act) {
    const auto line = std::ranges::find(_lines, act.lineId, &TableLine::id);
    if (!_table || line == _lines.end()) return false;
    const int place = static_cast<int>(std::distance(_lines.begin(), line));
    act.on ? moveSwitch(place, *act.on) : tap(place);
    return true;
}

void TableModel::resize(double width, double height) {
    if (!_table) return;
    _table->setFrame({0, 0, width, height});
    for (std::size_t i = 0; i < _lines.size(); ++i) {
        LiveRow* row = _lines[i].live.get();
        if (!row) continue;
        row->cell->setFrame({0, 0, width, row->cell->frame().height});
        row->cell->layoutSubviews();
        ++row->revision;
        notify(i, i, {TreeRole});
    }
}

void TableModel::redrawVisibleRows() {
    if (!_table) return;
    for (std::size_t i = 0; i < _lines.size(); ++i) {
        if (!_lines[i].live) continue;
        _lines[i].isAnimated = false;
        produce(_lines[i]);
        notify(i, i);
    }
}

void TableModel::reloadTable(platform::PSListController&) {
    if (!_table) return;
    beginResetModel();
    _lines = tableLines(*_table, _list);
    for (TableLine& line : _lines)
        line.id = ++_lastId;
    endResetModel();
}

void TableModel::reloadRow(platform::PSListController& page, std::size_t position, bool animated) {
    const platform::PSSpecifier* specifier = page.specifiers()[position].get();
    for (std::size_t i = 0; i < _lines.size(); ++i) {
        TableLine& line = _lines[i];
        if (line.specifier != specifier) continue;
        line.isAnimated = animated;
        if (line.live) produce(line);
        if (line.live || !line.isRow()) notify(i, i);
    }
}

void TableModel::insertRows(platform::PSListController&, std::size_t, Rows, bool animated) {
    rebuild(animated);
}

void TableModel::removeRows(platform::PSListController&, std::size_t, Rows, bool animated) {
    rebuild(animated);
}

void TableModel::rebuild(bool animated) {
    if (!_table) return;
    std::vector<TableLine> lines = tableLines(*_table, _list);
    const Change change = changeTo(lines);
    setAnimating(animated);
    removeLines(change.first, change.lastBefore);
    insertLines(change.first, lines, change.lastAfter);
    adoptPlaces(lines);
    if (_lines.empty()) return;
    // Rows beside the change may have become the first or last of their section, or no longer be.
    const std::size_t before = change.first > 0 ? change.first - 1 : 0;
    notify(before, std::min(change.lastAfter, _lines.size() - 1), {StartsRole, LastRole, BareRole});
}

TableModel::Change TableModel::changeTo(const std::vector<TableLine>& lines) const {
    auto differs = std::mismatch(_lines.begin(), _lines.end(), lines.begin(), lines.end(), standForSame);
    const auto first = std::distance(_lines.begin(), differs.first);
    const auto limit = std::min(std::distance(differs.first, _lines.end()), std::distance(differs.second, lines.end()));
    auto same = std::mismatch(_lines.rbegin(), std::next(_lines.rbegin(), limit), lines.rbegin(), standForSame);
    const auto kept = static_cast<std::size_t>(std::distance(_lines.rbegin(), same.first));
    return {static_cast<std::size_t>(first), _lines.size() - kept, lines.size() - kept};
}

void TableModel::removeLines(std::size_t first, std::size_t last) {
    if (first == last) return;
    beginRemoveRows({}, static_cast<int>(first), static_cast<int>(last) - 1);
    _lines.erase(_lines.begin() + offset(first), _lines.begin() + offset(last));
    endRemoveRows();
}

void TableModel::insertLines(std::size_t first, std::vector<TableLine>& lines, std::size_t last) {
    if (first == last) return;
    std::vector<TableLine> inserted;
    for (std::size_t i = first; i < last; ++i) {
        inserted.push_back(std::move(lines[i]));
        inserted.back().id = ++_lastId;
    }
    beginInsertRows({}, static_cast<int>(first), static_cast<int>(last) - 1);
    _lines.insert(_lines.begin() + offset(first), std::make_move_iterator(inserted.begin()),
                  std::make_move_iterator(inserted.end()));
    endInsertRows();
}

void TableModel::adoptPlaces(const std::vector<TableLine>& lines) {
    for (std::size_t i = 0; i < _lines.size(); ++i)
        _lines[i].path = lines[i].path;
}

void TableModel::setAnimating(bool animating) {
    if (_isAnimating == animating) return;
    emit settle();
    _isAnimating = animating;
    emit animatingChanged();
}

// Of the row alone that has looked at its file with the act: another program may have changed it, and the other rows
// show what it held.
void TableModel::takeLook(std::size_t line, int acted) {
    LiveRow* row = _lines[line].live.get();
    if (!row) return;
    const bool hasActed = _lines[line].id == acted;
    RowLook look = RowLook::of(*row->cell, hasActed ? _defaults : nullptr);
    if (!hasActed) look.isChanged = row->look.isChanged;
    if (look == row->look) return;
    row->look = std::move(look);
    ++row->revision;
    notify(line, line);
}

// A page may change the cells on its screen without telling the table.
void TableModel::takeLooks(int acted) {
    for (std::size_t i = 0; i < _lines.size(); ++i)
        takeLook(i, acted);
}

void TableModel::notify(std::size_t first, std::size_t last, const QList<int>& roles) {
    emit dataChanged(index(static_cast<int>(first)), index(static_cast<int>(last)), roles);
}

}  // namespace hosts::desktop
