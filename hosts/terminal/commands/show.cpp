// SPDX-License-Identifier: MIT
#include "hosts/session/exit_status.h"
#include "hosts/session/nearest_spelling.h"
#include "hosts/session/page_tour.h"
#include "hosts/session/services.h"
#include "hosts/session/settings_session.h"
#include "hosts/session/title_path.h"
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/commands/told_defaults.h"
#include "hosts/terminal/render/page_json.h"
#include "hosts/terminal/render/page_text.h"
#include "hosts/terminal/render/standard_output.h"
#include "hosts/terminal/render/value_json.h"

namespace hosts::terminal {
namespace {

/// Without pictures: opening those of many applications takes long on a far phone.
class WithoutPictures final : public ScratchFileSystem {
public:
    using ScratchFileSystem::readFile;
    using ScratchFileSystem::ScratchFileSystem;
    platform::Result<platform::Stamp> readFile(std::string_view path, std::string& contents,
                                               std::size_t limit) const override {
        if (!path.ends_with(".png")) return ScratchFileSystem::readFile(path, contents, limit);
        return platform::Problem{std::string(path), "cannot read", "no picture is looked at"};
    }
};

// Where there is a page of the title that was asked for last.
std::string elsewhere(OpenedPhone& context, std::string_view path) {
    const std::string_view wanted = path.substr(path.rfind('/') + 1);
    std::string found;
    seeEveryPage(context, [&](const std::vector<std::string>& titles, platform::UIViewController&) {
        if (found.empty() && !titles.empty() && titles.back() == wanted) found = titlePath(titles);
    });
    return didYouMean(found);
}

}  // namespace

int runShow(OpenedPhone& context, const ShowOptions& options) {
    // Looking changes nothing: what the page repairs stays in memory, and nobody is told.
    QuietServices services(context);
    const SessionServices quiet = services.forSession();
    WithoutPictures withoutPictures(quiet.files);
    // Text has none; but whoever wants to know what cannot be used is told of pictures too.
    const bool needsPictures = options.json || context.outcomes->tellsPassedOver();
    platform::FileSystem& files = needsPictures ? quiet.files : withoutPictures;
    const auto session =
        SettingsSession::load({files, quiet.notifications, quiet.application, quiet.device, quiet.listener},
                              context.installation.systemImage, context.shape);
    if (!session) return fail(failed, session.error());
    auto root = (*session)->makeRootPage();
    if (!root) return fail(failed, root.error());

    QuietScreen screen;
    platform::UINavigationController navigation(screen);
    navigation.pushViewController_animated(*std::move(root), false);
    const auto followed = followTitlePath(navigation, options.page);
    platform::UIViewController& page = *navigation.topViewController();
    const PageSnapshot snapshot = PageSnapshot::of(page);
    // First: a page may be missing only because of what could not be read.
    if (const auto problem = context.outcomes->takeProblem()) return fail(failed, *problem);
    if (!followed) return fail(failed, followed.error().reason + elsewhere(context, options.page));
    if (context.lacksApplications()) {
        warn(context.phone->identity().name +
             " is a support report: of applications it names those that are ticked alone, and it tells no exceptions");
    }
    tellDefaults(*context.outcomes, (*session)->platform(), (*session)->observedFiles());
    print(options.json ? jsonLine(pageJson(snapshot)) + "\n"
                       : pageText(page, snapshot, styleForStandardOutput(options.colour)));
    return done;
}

}  // namespace hosts::terminal
