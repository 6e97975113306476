// SPDX-License-Identifier: MIT
#include "hosts/session/title_path.h"

#include <algorithm>
#include <string>
#include <vector>

#include "hosts/session/nearest_spelling.h"
#include "hosts/session/printable.h"
#include "hosts/session/row_finder.h"
#include "platform/list/list_controller.h"

namespace hosts {
namespace {

using platform::PSListController;
using platform::UIViewController;

// The longest title at the start of the path that a row bears, or else the first title.
std::string_view firstTitle(UIViewController& page, std::string_view path) {
    std::string_view title = path;
    while (rowsLabelled(page, title).empty() && title.rfind('/') != std::string_view::npos)
        title = title.substr(0, title.rfind('/'));
    return title;
}

std::vector<std::string> linkTitles(UIViewController& page) {
    std::vector<std::string> titles;
    auto* list = dynamic_cast<PSListController*>(&page);
    if (!list) return titles;
    for (const auto& row : list->specifiers()) {
        if (isPageLink(*row)) titles.push_back(row->name());
    }
    return titles;
}

platform::Problem noSuchPage(UIViewController& page, std::string_view title) {
    const std::string reason = inQuotes(page.title()) + " leads to no page " + inQuotes(title);
    return {.reason = reason + didYouMean(nearestSpelling(title, linkTitles(page)))};
}

std::string_view withoutSlashesAround(std::string_view path) {
    path.remove_prefix(std::min(path.find_first_not_of('/'), path.size()));
    return path.substr(0, path.find_last_not_of('/') + 1);
}

}  // namespace

bool isPageLink(const platform::PSSpecifier& row) {
    return row.cellType() == platform::PSCellType::link && !row.action;
}

bool openPageTitled(UIViewController& page, std::string_view title, GreyedLinks greyed) {
    auto* list = dynamic_cast<PSListController*>(&page);
    if (!list) return false;
    return std::ranges::any_of(rowsLabelled(page, title), [list, greyed](platform::NSIndexPath path) {
        const auto row = list->specifierAtIndexPath(path);
        const bool mayBeFollowed = row->isEnabled() || greyed == GreyedLinks::followed;
        return isPageLink(*row) && mayBeFollowed && list->openDetailPage(row);
    });
}

platform::Result<platform::Done> openPage(platform::UINavigationController& navigation, std::string_view title) {
    UIViewController& page = *navigation.topViewController();
    if (!openPageTitled(page, title, GreyedLinks::followed)) return noSuchPage(page, title);
    return platform::Done();
}

platform::Result<platform::Done> followTitlePath(platform::UINavigationController& navigation, std::string_view path) {
    path = withoutSlashesAround(path);
    while (!path.empty()) {
        const std::string_view title = firstTitle(*navigation.topViewController(), path);
        const auto opened = openPage(navigation, title);
        if (!opened) return opened;
        path.remove_prefix(std::min(path.size(), title.size() + 1));
    }
    return platform::Done();
}

std::string titlePath(std::span<const std::string> titles) {
    std::string path;
    for (const std::string& title : titles)
        path += (path.empty() ? "" : "/") + title;
    return path;
}

}  // namespace hosts
