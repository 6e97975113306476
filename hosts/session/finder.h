// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/session/opened_phone.h"
#include "platform/list/specifier.h"
#include "platform/ui/index_path.h"
#include "platform/ui/navigation_controller.h"

namespace hosts {

/// Something that a page says, and where it stands.
struct FindHit {
    /// `choices` are the rows that stand for the values of one setting. In the order in which equals are told.
    enum class Kind { row, choices, header, footer };

    Kind kind = Kind::row;
    /// What the page says; of choices without a title, what they are. It may hold any bytes, as all texts here.
    std::string text = {};
    /// The titles of the links that lead to the page from the root page.
    std::vector<std::string> titles = {};
    /// The page and, within it, the title or the row that it belongs to, for people: from the root page, with " › "
    /// between.
    std::string place = {};
    /// The row to go to, and its label.
    platform::NSIndexPath path = {};
    std::string label = {};
    /// The setting that the row or the choices change; empty for none.
    std::string key = {};
};

/// A page that is open, and how it was come by.
struct OpenedPage {
    platform::UIViewController& page;
    std::vector<std::string> titles;
};

/// A hit as it is searched.
struct SearchedHit;

/// Finds what is said on the pages: rows, what stands above and below them, and settings by their own names. The pages
/// are looked at as `seeEveryPage` tells, so that nothing of the phone changes. Applications are not looked for on the
/// phone; those of the page that is open are found as it shows them.
class Finder {
public:
    /// The phone outlives the finder. Nothing is looked at yet.
    explicit Finder(OpenedPhone& opened);
    ~Finder();

    /// At most so many hits, the best first: what bears the text as its setting's name, then what begins with it, what
    /// has words that begin with its words, what holds them, and what stands where they do. Of equals, those of the
    /// page that is open come first. Small and capital letters are the same. Nothing for a text without a word.
    std::vector<FindHit> find(std::string_view text, std::size_t most, const OpenedPage& open);

    /// What the pages say may have changed: they are looked at anew for the next answer.
    void forget();

private:
    const std::vector<SearchedHit>& index();

    OpenedPhone& _phone;
    /// Null while nothing has been looked at.
    std::unique_ptr<std::vector<SearchedHit>> _index;
};

/// What to tell the user where nothing is found.
std::string remarkOnNoHits(bool isAnythingTyped);

/// Goes from the page on top, which the titles lead to, to that of the hit: back as far as needed, then on by links.
/// The problem, when a link is no longer there, is one line; what was opened by then stays open.
platform::Result<platform::Done> goToPage(platform::UINavigationController& navigation,
                                          const std::vector<std::string>& titles, const FindHit& hit);

/// Where the hit's row is on its page now; nothing when it is no longer there.
std::optional<platform::NSIndexPath> rowOf(platform::UIViewController& page, const FindHit& hit);

/// Whether the row stands for something of the phone's own, an application, and for no setting.
bool isApplicationRow(const platform::PSSpecifier& row);

}  // namespace hosts
