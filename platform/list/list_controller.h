// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/foundation/export.h"
#include "platform/list/page_controller.h"
#include "platform/list/specifier.h"
#include "platform/list/table_cell.h"
#include "platform/list/table_host.h"
#include "platform/ui/table_view.h"

namespace platform {

/// A page of rows. It keeps the current row array and what follows from it (sections, flat positions,
/// index paths), and tells the table's host of each change.
///
/// A group row opens a section and is not counted among its rows: section S, row 0 is the row after
/// the group row. Rows ahead of the first group row form a section of their own.
class TRIVEL3_PLATFORM_EXPORT PSListController : public PSViewController,
                                                 public UITableViewDataSource,
                                                 public UITableViewDelegate {
public:
    using Specifiers = std::vector<std::shared_ptr<PSSpecifier>>;

    using PSViewController::PSViewController;
    const char* className() const override { return "PSListController"; }

    /// The page's rows, built when they are first asked for. A page overrides this: it returns the
    /// current row array when there is one, else sets it with `setSpecifiers`.
    virtual const Specifiers& specifiers();

    /// Drops the current row array and asks for it anew.
    virtual void reloadSpecifiers();

    /// Redraws a row, which produces its cell again; for a group row, redraws its title and footer.
    /// A row that is not on the page is left alone.
    void reloadSpecifier_animated(const std::shared_ptr<PSSpecifier>& specifier, bool animated);

    /// Inserts rows as one run after a row of the page; does nothing when that row is not there.
    void insertContiguousSpecifiers_afterSpecifier_animated(const Specifiers& inserted,
                                                            const std::shared_ptr<PSSpecifier>& after, bool animated);
    void insertSpecifier_afterSpecifier_animated(const std::shared_ptr<PSSpecifier>& inserted,
                                                 const std::shared_ptr<PSSpecifier>& after, bool animated);

    /// Removes rows that stand on the page as one run. Of rows that do not, those from the first on
    /// that do are removed.
    void removeContiguousSpecifiers_animated(const Specifiers& removed, bool animated);
    void removeSpecifier_animated(const std::shared_ptr<PSSpecifier>& removed, bool animated);

    /// Whether the row is on the page: `containsObject:` of the current row array.
    bool containsSpecifier(const std::shared_ptr<PSSpecifier>& specifier) const;

    /// The flat position of a row, or of what would stand there; the size of the row array when the
    /// path leads nowhere.
    std::size_t indexForIndexPath(NSIndexPath path) const;
    /// Nothing for a group row's position and for one past the end.
    std::optional<NSIndexPath> indexPathForIndex(std::size_t position) const;
    /// The row at a path; null when the path leads nowhere.
    std::shared_ptr<PSSpecifier> specifierAtIndexPath(NSIndexPath path) const;
    /// The section's rows, its group row first.
    Specifiers specifiersInGroup(std::size_t section) const;
    /// The section's group row; null for rows ahead of the first group row.
    std::shared_ptr<PSSpecifier> groupSpecifier(std::size_t section) const;

    /// The page's table; loads the view when need be.
    UITableView& table();

    /// Makes the page of the row's detail class and puts it on top of this one, whether or not the row
    /// is greyed. False, with nothing done, when there is no such class.
    bool openDetailPage(const std::shared_ptr<PSSpecifier>& row);

    /// Who draws the table; null for nobody. Not owned.
    void setTableHost(TableHost* host) { _tableHost = host; }

    std::size_t numberOfSectionsInTableView(UITableView& table) override;
    std::size_t tableView_numberOfRowsInSection(UITableView& table, std::size_t section) override;
    /// An override calls its base first.
    std::shared_ptr<UITableViewCell> tableView_cellForRowAtIndexPath(UITableView& table, NSIndexPath path) override;
    std::optional<std::string> tableView_titleForHeaderInSection(UITableView& table, std::size_t section) override;
    std::optional<std::string> tableView_titleForFooterInSection(UITableView& table, std::size_t section) override;
    /// Greyed rows do not answer to touches.
    bool tableView_shouldHighlightRowAtIndexPath(UITableView& table, NSIndexPath path) override;
    /// Runs the row's action or follows its link. An override calls its base first.
    void tableView_didSelectRowAtIndexPath(UITableView& table, NSIndexPath path) override;

protected:
    void loadView() override;
    void viewDidLoad() override;

    /// Whether the current row array is set.
    bool hasSpecifiers() const { return _specifiers.has_value(); }
    /// The current row array; empty when it is not set.
    const Specifiers& currentSpecifiers() const;
    void setSpecifiers(Specifiers specifiers);

private:
    struct Section {
        std::size_t start;  ///< flat position of the group row, or of the first row where there is none
        bool hasGroupRow;
        std::size_t end;  ///< one past the last row
        std::size_t firstRow() const { return hasGroupRow ? start + 1 : start; }
    };

    std::optional<std::size_t> positionOf(const std::shared_ptr<PSSpecifier>& specifier) const;
    void findSections();

    std::optional<Specifiers> _specifiers;
    std::vector<Section> _sections;
    std::shared_ptr<UITableView> _table;
    TableHost* _tableHost = nullptr;
};

}  // namespace platform
