// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <span>

#include "platform/foundation/export.h"
#include "platform/list/specifier.h"

namespace platform {

class PSListController;

/// What a Settings application does to the table that shows a list page's rows. Positions are flat:
/// they count group rows too. Each call comes when the page's rows have already changed.
class TRIVEL3_PLATFORM_EXPORT TableHost {
public:
    using Rows = std::span<const std::shared_ptr<PSSpecifier>>;

    virtual ~TableHost() = default;
    /// Everything may have changed.
    virtual void reloadTable(PSListController& page) = 0;
    /// The row at this position is to be produced again; for a group row, its title and footer.
    virtual void reloadRow(PSListController& page, std::size_t position, bool animated) = 0;
    /// These rows now stand from this position on.
    virtual void insertRows(PSListController& page, std::size_t position, Rows rows, bool animated) = 0;
    /// These rows stood from this position on.
    virtual void removeRows(PSListController& page, std::size_t position, Rows rows, bool animated) = 0;
};

}  // namespace platform
