// SPDX-License-Identifier: MIT
#include "hosts/desktop/model/banners.h"

#include <QAccessible>
#include <algorithm>
#include <iterator>
#include <utility>

namespace hosts::desktop {

void Banners::tell(Banner banner) {
    if (banner.about != Banner::About::remark)
        std::erase_if(_banners, [&banner](const Banner& each) { return each.about == banner.about; });
    _banners.push_back(std::move(banner));
    emit changed();
}

void Banners::withdraw(Banner::About about) {
    const auto withdrawn = std::erase_if(_banners, [about](const Banner& each) { return each.about == about; });
    if (withdrawn > 0) emit changed();
}

Banners::Place Banners::current() const {
    const auto problem = std::find_if(_banners.rbegin(), _banners.rend(), std::mem_fn(&Banner::isProblem));
    if (problem != _banners.rend()) return std::prev(problem.base());
    const auto passing = std::find_if_not(_banners.rbegin(), _banners.rend(), std::mem_fn(&Banner::stays));
    return passing == _banners.rend() ? std::prev(_banners.end()) : std::prev(passing.base());
}

int Banners::waiting() const {
    const auto closable = std::count_if(_banners.begin(), _banners.end(), std::not_fn(std::mem_fn(&Banner::stays)));
    return closable == 0 ? 0 : static_cast<int>(closable) - 1;
}

Banner Banners::take() {
    const Place place = current();
    Banner taken = *place;
    _banners.erase(place);
    emit changed();
    return taken;
}

void Banners::close() {
    if (isShown() && !isStaying()) take();
}

void Banners::act() {
    if (!isShown()) return;
    const Banner acting = isStaying() ? *current() : take();
    if (acting.act) acting.act();
}

// The bridge to the desktop's bus keeps alerts to itself; who reads the screen there goes by alerts that come to be
// seen.
void Banners::announce(QObject* item) {
    QAccessibleEvent alert(item, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
    QAccessibleEvent shown(item, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&shown);
}

}  // namespace hosts::desktop
