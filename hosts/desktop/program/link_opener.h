// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/desktop/model/banners.h"
#include "hosts/hand_over/url_opener.h"

namespace hosts::desktop {

/// Opens the pane's addresses as another does, and tells of those that no program has opened: a page itself is silent.
class LinkOpener final : public platform::UIApplication {
public:
    /// `opener` outlives the object.
    explicit LinkOpener(UrlOpener& opener) : _opener(opener) {}

    /// Where it tells, from here on; they outlive the object.
    void tell(Banners& banners) { _banners = &banners; }

    bool canOpenURL(std::string_view url) override { return _opener.canOpenURL(url); }
    bool openURL(std::string_view url) override;

private:
    void tellUnopened(std::string_view url, const platform::Problem& problem);

    UrlOpener& _opener;
    Banners* _banners = nullptr;
};

}  // namespace hosts::desktop
