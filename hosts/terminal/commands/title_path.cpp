// SPDX-License-Identifier: MIT
#include "hosts/terminal/commands/title_path.h"

#include <algorithm>
#include <vector>

#include "hosts/session/row_finder.h"
#include "hosts/terminal/commands/nearest_spelling.h"
#include "hosts/terminal/render/printable.h"
#include "platform/list/list_controller.h"

namespace hosts::terminal {
namespace {

using platform::PSListController;
using platform::UIViewController;

struct Step {
    std::string_view title;
    std::vector<platform::NSIndexPath> rows;
};

// The longest title at the start of the path that a row bears, or else the first title.
Step firstStep(UIViewController& page, std::string_view path) {
    Step step{path, rowsLabelled(page, path)};
    while (step.rows.empty() && step.title.rfind('/') != std::string_view::npos) {
        step.title = step.title.substr(0, step.title.rfind('/'));
        step.rows = rowsLabelled(page, step.title);
    }
    return step;
}

// A page can be looked at while the link that leads to it is greyed.
bool takeStep(UIViewController& page, const Step& step) {
    auto* list = dynamic_cast<PSListController*>(&page);
    return list && std::ranges::any_of(step.rows, [list](platform::NSIndexPath path) {
               return list->openDetailPage(list->specifierAtIndexPath(path));
           });
}

std::vector<std::string> linkTitles(UIViewController& page) {
    std::vector<std::string> titles;
    auto* list = dynamic_cast<PSListController*>(&page);
    if (!list) return titles;
    for (const auto& row : list->specifiers()) {
        if (row->cellType() == platform::PSCellType::link && !row->action) titles.push_back(row->name());
    }
    return titles;
}

std::string noSuchPage(UIViewController& page, std::string_view title) {
    const std::string message = inQuotes(page.title()) + " leads to no page " + inQuotes(title);
    const auto titles = linkTitles(page);
    return titles.empty() ? message : message + "; did you mean " + inQuotes(nearestSpelling(title, titles)) + "?";
}

std::string_view withoutSlashesAround(std::string_view path) {
    path.remove_prefix(std::min(path.find_first_not_of('/'), path.size()));
    return path.substr(0, path.find_last_not_of('/') + 1);
}

}  // namespace

bool followTitlePath(platform::UINavigationController& navigation, std::string_view path, std::string& error) {
    path = withoutSlashesAround(path);
    while (!path.empty()) {
        UIViewController& page = *navigation.topViewController();
        const Step step = firstStep(page, path);
        if (!takeStep(page, step)) {
            error = noSuchPage(page, step.title);
            return false;
        }
        path.remove_prefix(std::min(path.size(), step.title.size() + 1));
    }
    return true;
}

}  // namespace hosts::terminal
