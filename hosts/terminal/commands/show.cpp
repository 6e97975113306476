// SPDX-License-Identifier: MIT
#include <string_view>

#include "hosts/session/composers.h"
#include "hosts/session/quiet_services.h"
#include "hosts/session/row_finder.h"
#include "hosts/session/scratch_file_system.h"
#include "hosts/session/settings_session.h"
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/exit_status.h"
#include "hosts/terminal/render/page_json.h"
#include "hosts/terminal/render/page_text.h"
#include "hosts/terminal/render/printable.h"
#include "hosts/terminal/render/value_json.h"
#include "platform/list/list_controller.h"
#include "platform/ui/navigation_controller.h"

namespace hosts::terminal {
namespace {

// A screen on which nothing is seen to change: the page is looked at once, in the end.
class StillScreen final : public platform::NavigationHost {
public:
    void didPush(platform::UIViewController&, bool) override {}
    void didPop(platform::UIViewController&, platform::UIViewController&, bool) override {}
    void didPresent(const std::shared_ptr<platform::UIViewController>&, bool) override {}
    void didDismiss(bool) override {}
};

// The page that the titles lead to; a title may itself hold a "/", so the longest that fits counts.
bool followTitles(platform::UINavigationController& navigation, std::string_view path, std::string& error) {
    while (!path.empty()) {
        const std::shared_ptr<platform::UIViewController> page = navigation.topViewController();
        std::string_view title = path;
        std::vector<platform::NSIndexPath> rows = rowsLabelled(*page, title);
        while (rows.empty() && title.rfind('/') != title.npos) {
            title = title.substr(0, title.rfind('/'));
            rows = rowsLabelled(*page, title);
        }
        // A page can be looked at while the row that leads to it is greyed.
        auto* list = dynamic_cast<platform::PSListController*>(page.get());
        if (!list || rows.empty() || !list->openDetailPage(list->specifierAtIndexPath(rows.front()))) {
            error = "'" + page->title() + "' leads to no page '" + std::string(title) + "'";
            return false;
        }
        path.remove_prefix(std::min(path.size(), title.size() + 1));
    }
    return true;
}

}  // namespace

int runShow(ProgramContext& context, const ShowOptions& options) {
    // Looking changes nothing: what the page repairs stays in memory, and nobody is told.
    ScratchFileSystem files(context.files);
    QuietNotifyCenter notifications;
    QuietApplication application;
    QuietDeviceQuery deviceQuery;
    Composers composers;
    SettingsSession session({files, notifications, application, deviceQuery, composers, composers},
                            context.installation.systemImage, context.device);
    std::string error;
    if (!session.loadPane(error)) return fail(failed, error);
    auto root = session.makeRootPage(error);
    if (!root) return fail(failed, error);

    StillScreen screen;
    platform::UINavigationController navigation(screen);
    navigation.pushViewController_animated(std::move(root), false);
    if (!followTitles(navigation, options.page, error)) return fail(failed, printable(error));

    platform::UIViewController& page = *navigation.topViewController();
    const PageSnapshot snapshot = PageSnapshot::of(page);
    print(options.json ? jsonLine(pageJson(snapshot)) + "\n" : pageText(page, snapshot, styleForStandardOutput()));
    return done;
}

}  // namespace hosts::terminal
