// SPDX-License-Identifier: MIT
#include "support/creators_page.h"

#include <iterator>
#include <string>
#include <string_view>

#include "platform/foundation/class_definition.h"
#include "resources/bundle_image.h"
#include "support/profile_cell.h"

namespace trivel3 {
namespace {

struct Creator {
    std::string_view name;  ///< the avatar's too
    std::string_view handleText;
    std::string_view info;
};

constexpr Creator creators[] = {
    {"Daxon", "(@Daxon_QT)", "Visual Interaction Designer,\nTrivel 3, Ostrel, Quill, Tern,\nFounder of Fenwary."},
    {"Movane", "(@MovaneX)", "Don't be afraid.\nI know it's not easy."},
};

constexpr std::size_t makerSection = std::size(creators);
constexpr std::string_view handles[] = {"Daxon_QT", "MovaneX", "Fenwary"};

constexpr double creatorHeight = 106;
constexpr double makerHeight = 44;

constexpr std::string_view independentClient = "tweetbot:///user_profile/";
constexpr std::string_view networkApplication = "twitter:///user?screen_name=";
constexpr std::string_view web = "https://twitter.com/";

void showCreator(KavixPreferencesProfileCell& cell, const Creator& creator) {
    cell.loadImage_nameText_handleText_infoText(creator.name, creator.name, creator.handleText, creator.info);
}

void showMaker(KavixPreferencesProfileCell& cell, platform::Platform& platform) {
    cell.loadImage_nameText_handleText_infoText(std::nullopt, std::nullopt, std::nullopt, std::nullopt);
    cell.textLabel()->setText("Follow Fenwary");
    cell.imageView()->image = bundleImage(platform, "Logo");
}

void openProfile(platform::UIApplication& application, std::string_view handle) {
    for (std::string_view prefix : {independentClient, networkApplication}) {
        const std::string address = std::string(prefix).append(handle);
        if (!application.canOpenURL(address)) continue;
        application.openURL(address);
        return;
    }
    application.openURL(std::string(web).append(handle));
}

}  // namespace

void KavixPreferencesProfileController::loadView() {
    auto table = std::make_shared<platform::UITableView>(platform::CGRect{}, platform::UITableViewStyle::grouped);
    table->setDelegate(this);
    table->setDataSource(this);
    setView(std::move(table));
}

std::size_t KavixPreferencesProfileController::numberOfSectionsInTableView(platform::UITableView&) {
    return std::size(handles);
}

std::size_t KavixPreferencesProfileController::tableView_numberOfRowsInSection(platform::UITableView&, std::size_t) {
    return 1;
}

std::shared_ptr<platform::UITableViewCell> KavixPreferencesProfileController::tableView_cellForRowAtIndexPath(
    platform::UITableView& table, platform::NSIndexPath path) {
    auto cell = std::dynamic_pointer_cast<KavixPreferencesProfileCell>(
        table.dequeueReusableCellWithIdentifier(KavixPreferencesProfileCell::usualReuseIdentifier));
    if (!cell) {
        cell = std::make_shared<KavixPreferencesProfileCell>(platform(), platform::UITableViewCellStyle::standard,
                                                             KavixPreferencesProfileCell::usualReuseIdentifier);
    }
    if (path.section < makerSection) showCreator(*cell, creators[path.section]);
    if (path.section == makerSection) showMaker(*cell, platform());
    cell->accessoryType = platform::UITableViewCellAccessoryType::disclosureIndicator;
    return cell;
}

double KavixPreferencesProfileController::tableView_heightForRowAtIndexPath(platform::UITableView&,
                                                                            platform::NSIndexPath path) {
    return path.section < makerSection ? creatorHeight : makerHeight;
}

double KavixPreferencesProfileController::tableView_estimatedHeightForRowAtIndexPath(platform::UITableView& table,
                                                                                     platform::NSIndexPath path) {
    return tableView_heightForRowAtIndexPath(table, path);
}

void KavixPreferencesProfileController::tableView_didSelectRowAtIndexPath(platform::UITableView& table,
                                                                          platform::NSIndexPath path) {
    table.deselectRowAtIndexPath_animated(path, true);
    if (path.section < std::size(handles)) openProfile(platform().application, handles[path.section]);
}

}  // namespace trivel3

template void platform::addClass<trivel3::KavixPreferencesProfileController>(ClassRegistry& classes);
