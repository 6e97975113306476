// SPDX-License-Identifier: MIT
#include "pages/list_page_controller.h"

namespace trivel3 {
namespace {

constexpr int doNotDisplay = 0;
constexpr int display = 1;
constexpr int autoDismiss = 2;

constexpr Choice notPlaying = {"QuickLauncherNotPlaying", ChoiceMode::singleValue, AfterChoice::updateSpecifiers};
constexpr Choice isPlaying = {"QuickLauncherIsPlaying", ChoiceMode::singleValue, AfterChoice::updateSpecifiers};
constexpr Choice delay = {"QuickLauncherAutoDismissDelay", ChoiceMode::singleValue, AfterChoice::updateSpecifiers};

constexpr Facts dismissesItself = 1;
constexpr Blocks delays = 1;

// clang-format off
constexpr Row rows[] = {
    titledGroup("When No Media is Playing"),
    choice("Display",         notPlaying, display),
    choice("Do Not Display",  notPlaying, doNotDisplay),
    choice("Auto-Dismiss",    notPlaying, autoDismiss),
    titledGroup("When Media is Playing"),
    choice("Auto-Dismiss",    isPlaying, autoDismiss),
    choice("Do Not Display",  isPlaying, doNotDisplay),
    choice("Display",         isPlaying, display),
    titledGroup("Auto-Dismiss").in(delays),
    choice("After 1 second",  delay, 1).in(delays),
    choice("After 3 seconds", delay, 3).in(delays),
    choice("After 5 seconds", delay, 5).in(delays),
    choice("After 8 seconds", delay, 8).in(delays),
};
// clang-format on

constexpr Presence presence[] = {{.block = delays, .shownWhen = all<dismissesItself>, .comesBack = true}};
constexpr PageTable page(rows, presence);

}  // namespace

/// When the Quick Launcher shows, with and without media playing, and after how long it goes away.
class KavixPreferencesQuickLauncherController final : public KavixPreferencesListController {
public:
    using KavixPreferencesListController::KavixPreferencesListController;
    static constexpr const char* registeredName = "KavixPreferencesQuickLauncherController";
    const char* className() const override { return registeredName; }

protected:
    const PageTable& pageTable() const override { return page; }
    Facts readFacts() const override {
        const std::int64_t idle = platform::integerValue(store().preferenceForKey(notPlaying.key));
        const std::int64_t playing = platform::integerValue(store().preferenceForKey(isPlaying.key));
        return idle == autoDismiss || playing == autoDismiss ? dismissesItself : 0;
    }
};

}  // namespace trivel3

template void platform::addClass<trivel3::KavixPreferencesQuickLauncherController>(ClassRegistry& classes);
