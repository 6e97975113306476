// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

/// The pages' rows, written down once more by hand: the model must not learn them from the pane.
namespace model {

struct Row {
    enum class Kind { group, switchRow, choice, link };
    Kind kind;
    std::string label;   ///< a group's title
    std::string key;     ///< a switch's or choice's setting; a link's page class
    int value = 0;       ///< a choice's value
    std::string footer;  ///< a group's footer when it is built
};

struct PageTable {
    std::string className;
    std::string title;
    std::vector<Row> rows;
};

const PageTable& rootTable();
const PageTable& optionsTable();
const PageTable& quickLauncherTable();
const PageTable& sliderActionsTable();
const PageTable& albumArtworkTable();

}  // namespace model
