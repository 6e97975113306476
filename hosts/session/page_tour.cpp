// SPDX-License-Identifier: MIT
#include "hosts/session/page_tour.h"

#include <cstddef>
#include <memory>
#include <string_view>
#include <utility>

#include "hosts/session/services.h"
#include "hosts/session/settings_session.h"
#include "hosts/session/title_path.h"
#include "platform/list/list_controller.h"
#include "platform/services/app_list.h"

namespace hosts {

namespace {

using platform::PSListController;

// Far above what any pane has: links may lead in circles.
constexpr std::size_t mostPages = 200;

class NoApplications final : public platform::ALApplicationList {
public:
    Applications applications() override { return {}; }
    Applications applicationsFilteredBySystem(bool) override { return {}; }
    std::shared_ptr<const platform::UIImage> iconOfSize_forDisplayIdentifier(int, std::string_view) override {
        return nullptr;
    }
};

/// Goes from page to page by the links.
class LinkWalk {
public:
    LinkWalk(platform::UINavigationController& navigation, const SeePage& see) : _navigation(navigation), _see(see) {}

    void visit(const std::vector<std::string>& titles) {
        const std::shared_ptr<platform::UIViewController> page = _navigation.topViewController();
        ++_pages;
        _see(titles, *page);
        auto* list = dynamic_cast<PSListController*>(page.get());
        if (!list) return;
        const PSListController::Specifiers rows = list->specifiers();
        for (const auto& row : rows) {
            if (_pages == mostPages || !isPageLink(*row) || !list->openDetailPage(row)) continue;
            std::vector<std::string> further = titles;
            further.push_back(row->name());
            visit(further);
            _navigation.popViewControllerAnimated(false);
        }
    }

private:
    platform::UINavigationController& _navigation;
    const SeePage& _see;
    std::size_t _pages = 0;
};

}  // namespace

struct PageTour::Surroundings {
    /// What pages say does not depend on what they repair, and a large file takes long to be repaired.
    struct UnchangedFiles final : ScratchFileSystem {
        using ScratchFileSystem::ScratchFileSystem;
        platform::Result<platform::Stamp> changeFile(std::string_view path, const platform::Change&) override {
            return platform::Problem{std::string(path), "cannot write", "it is only looked at"};
        }
    };

    explicit Surroundings(const platform::FileSystem& below) : files(below) {}

    UnchangedFiles files;
    QuietNotifyCenter notifications;
    QuietApplication application;
    std::unique_ptr<SettingsSession> session;
};

PageTour::PageTour(OpenedPhone& opened, const platform::FileSystem& files, Applications applications)
    : _surroundings(std::make_unique<Surroundings>(files)) {
    Surroundings& around = *_surroundings;
    auto loaded =
        SettingsSession::load({around.files, around.notifications, around.application, opened.phone->device()},
                              opened.installation.systemImage, opened.shape);
    if (!loaded) return;
    around.session = *std::move(loaded);
    if (applications == Applications::lookedFor) return;
    around.session->platform().classes.add({platform::ALApplicationList::className,
                                            [](platform::Platform&) { return std::make_shared<NoApplications>(); }});
}

PageTour::~PageTour() = default;

void PageTour::seeEveryPage(const SeePage& see) {
    auto& session = _surroundings->session;
    if (!session) return;
    auto root = session->makeRootPage();
    if (!root) return;
    QuietScreen screen;
    platform::UINavigationController navigation(screen);
    navigation.pushViewController_animated(*std::move(root), false);
    LinkWalk(navigation, see).visit({});
    session->drawn();
}

void seeEveryPage(OpenedPhone& opened, const SeePage& see) {
    seeEveryPage(opened, opened.phone->files(), see);
}

void seeEveryPage(OpenedPhone& opened, const platform::FileSystem& files, const SeePage& see) {
    PageTour(opened, files).seeEveryPage(see);
}

}  // namespace hosts
