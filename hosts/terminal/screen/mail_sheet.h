// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "hosts/session/composer_outcome.h"
#include "hosts/terminal/render/screen_text.h"
#include "hosts/terminal/screen/controls.h"
#include "hosts/terminal/screen/sheet.h"
#include "platform/services/mail_composer.h"

namespace hosts::terminal::screen {

/// An e-mail for the user to look over, and then to send, save or drop.
class MailSheet final : public Sheet {
public:
    using Composer = platform::MFMailComposeViewController;

    MailSheet(std::shared_ptr<Composer> composer, HandOver& handOver, Notices& notices, const ScreenText& text);

    std::string title() const override { return "New E-mail"; }
    Picture compose(Size size) override;
    std::vector<KeyHint> hints() const override;
    void handle(const Event& event) override;

private:
    void addField(Picture& picture, std::string_view name, std::string_view content, std::size_t width) const;
    void press(std::size_t button);

    std::shared_ptr<Composer> _composer;
    HandOver& _handOver;
    Notices& _notices;
    ScreenText _text;
    ButtonRow _buttons;
    std::size_t _focus = 0;
    std::size_t _buttonLine = 0;
};

}  // namespace hosts::terminal::screen
