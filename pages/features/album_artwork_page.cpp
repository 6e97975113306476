// SPDX-License-Identifier: MIT
#include "pages/list_page_controller.h"

namespace trivel3 {
namespace {

constexpr Choice autoDisplay = {"AlbumArtworkAutoDisplay", ChoiceMode::flagSet, AfterChoice::updateSpecifiers};
constexpr Choice delay = {"AlbumArtworkAutoDismissDelay"};

constexpr Facts hasEvents = 1;
constexpr Blocks delays = 1;

// clang-format off
constexpr Row rows[] = {
    titledGroup("Auto-Display"),
    choice("On Play",         autoDisplay, 1),
    choice("On Next",         autoDisplay, 2),
    choice("On Previous",     autoDisplay, 4),
    titledGroup("Auto-Dismiss").in(delays),
    choice("After 1 second",  delay, 1).in(delays),
    choice("After 3 seconds", delay, 3).in(delays),
    choice("After 5 seconds", delay, 5).in(delays),
    choice("After 8 seconds", delay, 8).in(delays),
};
// clang-format on

constexpr Presence presence[] = {{.block = delays, .shownWhen = all<hasEvents>, .comesBack = true}};
constexpr PageTable page(rows, presence);

}  // namespace

/// On which media events the album artwork shows itself, and after how long it goes away.
class KavixPreferencesAlbumArtworkController final : public KavixPreferencesListController {
public:
    using KavixPreferencesListController::KavixPreferencesListController;
    static constexpr const char* registeredName = "KavixPreferencesAlbumArtworkController";
    const char* className() const override { return registeredName; }

protected:
    const PageTable& pageTable() const override { return page; }
    // A negative value has bits set but stands for no events.
    Facts readFacts() const override {
        return platform::integerValue(store().preferenceForKey(autoDisplay.key)) >= 1 ? hasEvents : 0;
    }
};

}  // namespace trivel3

template void platform::addClass<trivel3::KavixPreferencesAlbumArtworkController>(ClassRegistry& classes);
