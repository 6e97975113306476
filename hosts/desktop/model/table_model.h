// SPDX-License-Identifier: MIT
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QAbstractListModel>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "hosts/session/page_snapshot.h"
#include "platform/list/list_controller.h"
#include "platform/list/table_host.h"
#include "platform/ui/table_view.h"

namespace hosts::desktop {

/// All texts in a view on one line, from the first drawn to the last, for those who cannot see it.
QString spokenTexts(const platform::UIView& view);

/// A row whose cell is on the screen.
struct LiveRow {
    std::shared_ptr<platform::UITableViewCell> cell;
    RowLook look;
    int revision = 0;
};

/// One line of a table as it is drawn from top to bottom: what stands above a section's rows, a row,
/// or what stands below them.
struct TableLine {
    enum class Part { header, row, footer };

    Part part = Part::row;
    /// As the model tells it.
    const char* kind = "";
    platform::NSIndexPath path;
    /// The row or group row that the line stands for; null where the page knows no such thing.
    const platform::PSSpecifier* specifier = nullptr;
    /// Tells this line from all others of its table, those that are gone included; 0 before the table
    /// has taken it in.
    int id = 0;
    /// Whether the last change of what the line shows is to be seen happening.
    bool isAnimated = false;
    std::unique_ptr<LiveRow> live;

    bool isRow() const { return part == Part::row; }
    /// Whether the page makes the row's cell itself.
    bool isView() const { return isRow() && !specifier; }
};

/// A line as it is told to those who cannot see it.
struct SpokenLine {
    TableLine::Part part = TableLine::Part::row;
    bool isView = false;
    bool isOpen = false;  ///< of a link whose page is marked as the open one
    QString name;
    QString description;  ///< whether the row is changed, and what stands below it
    RowLook look;         ///< a row's
};

/// What the user has done to a row.
struct RowAct {
    int lineId = 0;
    /// Where its switch has been moved; nothing for a touch.
    std::optional<bool> on;
};

/// A page's table, line by line. A row's cell is produced when the row's delegate first asks what it
/// shows, and kept until the delegate says that it has gone.
class TableModel : public QAbstractListModel, public platform::TableHost {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A page has its table")
    /// Whether lines that come and go are to be seen doing so.
    Q_PROPERTY(bool animating READ isAnimating NOTIFY animatingChanged)
    /// What has been typed of an application's name, on a page that lists applications.
    Q_PROPERTY(QString typed READ typed NOTIFY typedChanged)
    /// Whether there is no application of that name.
    Q_PROPERTY(bool typedInVain READ isTypedInVain NOTIFY typedChanged)

public:
    enum Role {
        KindRole = Qt::UserRole,  ///< "header", "footer", "switch", "link", "item" or "view"
        LineIdRole,
        TextRole,  ///< a row's label, a section's title or footer
        PictureRole,
        UsableRole,
        CheckedRole,
        OnRole,
        DisclosureRole,
        InsetRole,
        AccessoryWidthRole,
        RowHeightRole,
        ChangedRole,  ///< whether the row's setting differs from its default
        TreeRole,
        FirstRole,    ///< a line of the first section
        StartsRole,   ///< the first row of its section
        LastRole,     ///< the last row of its section
        OpenRole,     ///< whether the page that the row leads to is marked as the open one
        BareRole,     ///< a footer of a section without rows
        AnimatedRole  ///< whether the last change is to be seen happening
    };

    /// Both outlive the model, or are let go first. `list` is the page when it is a list of rows. `defaults` outlive
    /// it; null where no row is to say that it is changed.
    TableModel(platform::UITableView& table, platform::PSListController* list, const Defaults* defaults);
    ~TableModel() override;

    /// From here on the model shows what it has shown last, and nothing reaches the page.
    void letGo();

    bool isAnimating() const { return _isAnimating; }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// The row's delegate has gone; its cell may go too.
    Q_INVOKABLE void lineLeft(int lineId);
    /// The row nearest to a line, going by the step, which is not the line itself; -1 for none.
    Q_INVOKABLE int rowBeside(int line, int step) const;

    /// The line that the row is on; -1 for none.
    int lineOfRow(platform::NSIndexPath path) const;

    /// A row's label and the setting with a default that it changes, or no key. Nothing for what is no row.
    struct RowSetting {
        std::string label;
        std::optional<std::string> key;
    };
    std::optional<RowSetting> settingAt(int line) const;
    Q_INVOKABLE bool isRow(int line) const { return isLine(line) && lineAt(line).isRow(); }

    /// What a line says, whether or not it is on the screen; nothing for a number that is no line's.
    SpokenLine spoken(int line) const;
    /// Whether it says anything: there are headers and footers without a text.
    bool says(int line) const;
    int idAt(int line) const { return isLine(line) ? lineAt(line).id : 0; }

    const QString& typed() const { return _typed; }
    bool isTypedInVain() const { return _isTypedInVain; }
    /// Whether typing is for the page's applications.
    Q_INVOKABLE bool listsApplications() const;
    /// Takes what has been typed, and gives the line of the application that it is best for: whose name begins with it,
    /// or else has a word that does, or else holds it; -1 for none.
    Q_INVOKABLE int type(const QString& typed);
    /// The user goes on in another way, as by an act on a row.
    Q_INVOKABLE void endTyping();

    /// What Enter, Space and others who have no finger do to the row: its switch is moved where it has one, and else it
    /// is tapped. Nothing on a row that is greyed.
    Q_INVOKABLE void activate(int line);
    /// A finger on the row.
    Q_INVOKABLE void tap(int line);
    /// The row's switch moved.
    Q_INVOKABLE void moveSwitch(int line, bool on);

    /// Asked before a link is followed, with the row that is touched: whether that may be. What it does to the page
    /// comes first.
    using MayFollow = std::function<bool(const platform::PSSpecifier& link)>;
    void askBeforeLinks(MayFollow mayFollow) { _mayFollow = std::move(mayFollow); }

    /// Marks the row whose page is open; null for none.
    void markOpen(const platform::PSSpecifier* link);

    /// What the user has done last since this was last asked; nothing where that is nothing.
    std::optional<RowAct> takeAct() { return std::exchange(_act, std::nullopt); }
    /// Does the same to the same row, as the user would. False where the row is no longer there.
    bool repeat(const RowAct& act);

    /// The table's new width in points; the height goes along for those who ask.
    void resize(double width, double height);

    /// Produces the cells on the screen again.
    void redrawVisibleRows();

    // The list's own operations of these names stand beside the table's.
    using QAbstractListModel::insertRows;
    using QAbstractListModel::removeRows;
    void reloadTable(platform::PSListController& page) override;
    void reloadRow(platform::PSListController& page, std::size_t position, bool animated) override;
    void insertRows(platform::PSListController& page, std::size_t position, Rows rows, bool animated) override;
    void removeRows(platform::PSListController& page, std::size_t position, Rows rows, bool animated) override;

signals:
    /// The user has done something to a row.
    void acted();
    void animatingChanged();
    void typedChanged();
    /// Changes so far are to be laid out now: those that follow are of another kind.
    void settle();

private:
    /// The lines [first, last) of the old table that make room for the new one's.
    struct Change {
        std::size_t first;
        std::size_t lastBefore;
        std::size_t lastAfter;
    };

    void noteAct(const RowAct& act);
    bool mayFollow(const TableLine& line) const;
    void rebuild(bool animated);
    Change changeTo(const std::vector<TableLine>& lines) const;
    void removeLines(std::size_t first, std::size_t last);
    void insertLines(std::size_t first, std::vector<TableLine>& lines, std::size_t last);
    void adoptPlaces(const std::vector<TableLine>& lines);
    void setAnimating(bool animating);

    int applicationNamed(const QString& typed) const;
    bool isLine(int line) const { return line >= 0 && static_cast<std::size_t>(line) < _lines.size(); }
    TableLine& lineAt(int line) const { return _lines[static_cast<std::size_t>(line)]; }
    LiveRow* liveRow(TableLine& line) const;
    void produce(TableLine& line) const;
    void takeLook(std::size_t line, int acted);
    void takeLooks(int acted);
    void notify(std::size_t first, std::size_t last, const QList<int>& roles = {});

    QVariant rowData(TableLine& line, int role) const;
    QString sectionText(const TableLine& line) const;
    RowLook lookOf(const TableLine& line) const;
    QString footerBelow(std::size_t line) const;
    bool isStart(std::size_t line) const;
    bool isLast(std::size_t line) const;
    bool isBare(std::size_t line) const;
    bool isRowAt(std::size_t line) const;
    std::optional<platform::NSIndexPath> placeOf(const TableLine& line) const;

    platform::UITableView* _table;
    platform::PSListController* _list;
    const Defaults* _defaults;
    /// Asking what a row shows produces its cell.
    mutable std::vector<TableLine> _lines;
    int _lastId = 0;
    bool _isAnimating = false;
    std::optional<RowAct> _act;
    MayFollow _mayFollow;
    const platform::PSSpecifier* _open = nullptr;
    QString _typed;
    bool _isTypedInVain = false;
};

}  // namespace hosts::desktop
