// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/list/list_controller.h"
#include "tests/kit/print.h"
#include "tests/kit/test_platform.h"

namespace list_test {

using Row = std::shared_ptr<platform::PSSpecifier>;
using Rows = std::vector<Row>;

Row group(std::string title = {}, std::string footer = {});
/// A plain row.
Row item(std::string label);
Row link(std::string label, std::string pageClass);
Row toggle(std::string label, platform::PSSpecifier::Getter getter = nullptr,
           platform::PSSpecifier::Setter setter = nullptr);
Row withAction(Row row, platform::PSSpecifier::Action action);
Row greyed(Row row);

/// A list page that shows the rows it was made with.
class RowPage : public platform::PSListController {
public:
    RowPage(platform::Platform& platform, Rows rows) : PSListController(platform), _rows(std::move(rows)) {}
    const char* className() const override { return "RowPage"; }

    const Specifiers& specifiers() override {
        if (!hasSpecifiers()) {
            ++timesBuilt;
            setSpecifiers(_rows);
        }
        return currentSpecifiers();
    }

    int timesBuilt = 0;

private:
    Rows _rows;
};

/// A platform whose top page shows some rows.
class ShownRows : public kit::TestPlatform {
public:
    explicit ShownRows(Rows rows);

    RowPage& page() const { return screen.pageAs<RowPage>(); }
};

std::vector<std::string> labelsOf(const Rows& rows);

}  // namespace list_test
