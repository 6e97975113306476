// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/export.h"
#include "platform/ui/index_path.h"
#include "platform/ui/table_view_cell.h"
#include "platform/ui/view.h"

namespace platform {

class UITableView;

/// Says what a table shows. Indices given to it are within the counts that it gave.
class TRIVEL3_PLATFORM_EXPORT UITableViewDataSource {
public:
    virtual ~UITableViewDataSource() = default;
    virtual std::size_t numberOfSectionsInTableView(UITableView& table) = 0;
    virtual std::size_t tableView_numberOfRowsInSection(UITableView& table, std::size_t section) = 0;
    virtual std::shared_ptr<UITableViewCell> tableView_cellForRowAtIndexPath(UITableView& table, NSIndexPath path) = 0;
    /// Nothing shows no title or footer.
    virtual std::optional<std::string> tableView_titleForHeaderInSection(UITableView& table, std::size_t section);
    virtual std::optional<std::string> tableView_titleForFooterInSection(UITableView& table, std::size_t section);
};

/// Says how rows behave.
class TRIVEL3_PLATFORM_EXPORT UITableViewDelegate {
public:
    static constexpr double defaultRowHeight = 44;

    virtual ~UITableViewDelegate() = default;
    virtual double tableView_heightForRowAtIndexPath(UITableView& table, NSIndexPath path);
    virtual double tableView_estimatedHeightForRowAtIndexPath(UITableView& table, NSIndexPath path);
    /// Whether the row answers to a touch at all.
    virtual bool tableView_shouldHighlightRowAtIndexPath(UITableView& table, NSIndexPath path);
    virtual void tableView_didSelectRowAtIndexPath(UITableView& table, NSIndexPath path);
};

enum class UITableViewStyle { plain = 0, grouped = 1 };

class TRIVEL3_PLATFORM_EXPORT UITableView : public UIView {
public:
    explicit UITableView(CGRect frame, UITableViewStyle style) : UIView(frame), _style(style) {}
    const char* className() const override { return "UITableView"; }

    UITableViewStyle style() const { return _style; }

    /// Not owned: the page that the table belongs to is usually both.
    void setDataSource(UITableViewDataSource* source) { _dataSource = source; }
    void setDelegate(UITableViewDelegate* delegate) { _delegate = delegate; }
    UITableViewDataSource* dataSource() const { return _dataSource; }
    UITableViewDelegate* delegate() const { return _delegate; }

    /// A view above the first section. It takes the table's width when the table changes its own.
    const std::shared_ptr<UIView>& tableHeaderView() const { return _tableHeaderView; }
    void setTableHeaderView(std::shared_ptr<UIView> view) { _tableHeaderView = std::move(view); }

    /// Stretches the header view along.
    void setFrame(CGRect frame) override;

    /// A cell handed back by `enqueueReusableCell`, or null. It shows what it last showed.
    std::shared_ptr<UITableViewCell> dequeueReusableCellWithIdentifier(std::string_view identifier);
    /// What a host does with a cell that has left the screen. Cells without an identifier are dropped.
    void enqueueReusableCell(std::shared_ptr<UITableViewCell> cell);

    bool hasRowAtIndexPath(NSIndexPath path);

    /// What a host calls to put a row on the screen: asks the data source for the cell and lays it
    /// out at the table's width and the row's height. Null when there is no such row.
    std::shared_ptr<UITableViewCell> produceCellForRowAtIndexPath(NSIndexPath path);

    /// What a host calls when the user has touched a row. A row that does not answer to touches
    /// stays as it is. False when there is no such row.
    bool touchRowAtIndexPath(NSIndexPath path);

    const std::optional<NSIndexPath>& indexPathForSelectedRow() const { return _selectedRow; }
    void deselectRowAtIndexPath_animated(NSIndexPath path, bool animated);

private:
    UITableViewStyle _style;
    UITableViewDataSource* _dataSource = nullptr;
    UITableViewDelegate* _delegate = nullptr;
    std::shared_ptr<UIView> _tableHeaderView;
    std::vector<std::shared_ptr<UITableViewCell>> _reusableCells;
    std::optional<NSIndexPath> _selectedRow;
};

}  // namespace platform
