// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "hosts/session/composed_mail.h"
#include "hosts/terminal/render/screen_text.h"
#include "hosts/terminal/screen/controls.h"
#include "hosts/terminal/screen/sheet.h"

namespace hosts::terminal::screen {

/// An e-mail for the user to look over, and then to send, save or drop.
class MailSheet final : public Sheet {
public:
    using Composer = ComposedMail::Composer;

    /// The notices and the overlay outlive the sheet.
    MailSheet(const ComposedMail& mail, Notices& notices, Overlay& overlay, const ScreenText& text);

    std::string title() const override { return "New E-mail"; }
    Picture compose(Size size) override;
    std::vector<KeyHint> hints() const override;
    void handle(const Event& event) override;

private:
    void addField(Picture& picture, std::string_view name, std::string_view content, std::size_t width) const;
    void press(std::optional<std::size_t> button);
    void handOver(ComposedMail::Way way);
    void askForFolder(ComposedMail::Way way, std::string suggestion);

    ComposedMail _mail;
    Notices& _notices;
    Overlay& _overlay;
    ScreenText _text;
    ButtonRow _buttons;
    SheetFocus _focus;
    std::size_t _buttonLine = 0;
};

}  // namespace hosts::terminal::screen
