// SPDX-License-Identifier: MIT
#include "hosts/session/composers.h"
#include "hosts/session/quiet_services.h"
#include "hosts/session/scratch_file_system.h"
#include "hosts/session/settings_session.h"
#include "hosts/session/title_path.h"
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/exit_status.h"
#include "hosts/terminal/render/page_json.h"
#include "hosts/terminal/render/page_text.h"
#include "hosts/terminal/render/value_json.h"
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

}  // namespace

int runShow(ProgramContext& context, const ShowOptions& options) {
    // Looking changes nothing: what the page repairs stays in memory, and nobody is told.
    ScratchFileSystem files(context.files);
    QuietNotifyCenter notifications;
    QuietApplication application;
    QuietDeviceQuery deviceQuery;
    Composers composers;
    SettingsSession session({files, notifications, application, deviceQuery, composers, composers, context.skips.get()},
                            context.installation.systemImage, context.device);
    std::string error;
    if (!session.loadPane(error)) return fail(failed, error);
    auto root = session.makeRootPage(error);
    if (!root) return fail(failed, error);

    StillScreen screen;
    platform::UINavigationController navigation(screen);
    navigation.pushViewController_animated(std::move(root), false);
    const auto followed = followTitlePath(navigation, options.page);
    if (!followed) return fail(failed, followed.error().text());

    platform::UIViewController& page = *navigation.topViewController();
    const PageSnapshot snapshot = PageSnapshot::of(page);
    print(options.json ? jsonLine(pageJson(snapshot)) + "\n" : pageText(page, snapshot, styleForStandardOutput()));
    return done;
}

}  // namespace hosts::terminal
