// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "hosts/session/finder.h"
#include "hosts/session/settings_session.h"
#include "hosts/terminal/render/picture.h"
#include "hosts/terminal/render/screen_text.h"
#include "hosts/terminal/screen/bars.h"
#include "hosts/terminal/screen/event.h"
#include "hosts/terminal/screen/screen_host.h"
#include "hosts/terminal/screen/sheet.h"
#include "platform/ui/navigation_controller.h"

namespace hosts::terminal::screen {

/// Opens addresses with the user's programs and says so, since a terminal shows nothing of it.
class NoticingApplication final : public platform::UIApplication {
public:
    NoticingApplication(UrlOpener& opener, Notices& notices) : _opener(opener), _notices(notices) {}

    bool canOpenURL(std::string_view url) override { return _opener.canOpenURL(url); }
    bool openURL(std::string_view url) override;

private:
    UrlOpener& _opener;
    Notices& _notices;
};

/// A Settings application for a terminal, without the terminal: events go in, pictures come out.
class SettingsScreen {
public:
    static constexpr Size leastSize{40, 12};

    /// `phone` outlives the object.
    SettingsScreen(OpenedPhone& phone, const TextStyle& style);

    /// Loads the pane and opens its root page.
    platform::Result<platform::Done> start();

    /// The whole screen as it is now, which ends the turn. Rows that have come into view are produced for it.
    Picture compose(Size size);

    /// What takes the last line's place while the phone is waited for.
    Line waitingLine(std::size_t width) const;

    /// Carries out what the user did to the screen that was last composed.
    void handle(const Event& event);

    /// The paths of the files that the pane keeps.
    const std::vector<std::string>& observedFiles() const { return _observedFiles; }
    std::vector<std::string> observedNotifications() { return _session->observedNotifications(); }

    /// Another process may have changed one of these files. Where it has, the rows that are seen are produced again for
    /// the next picture, which is then due; gives whether it is.
    bool noteFilesChanged(std::span<const std::string> paths);

    /// What is seen stays as it is.
    void noteLoss(const PhoneEvent& loss) { _notices.warn(lossText(loss)); }

    /// The user wants to quit: at once, or once they have agreed that what they have typed goes too.
    void quit();

    /// Whether the user has had enough.
    bool isOver() const { return _isOver; }

private:
    std::shared_ptr<Sheet> sheetFor(const std::shared_ptr<platform::UIViewController>& presented);
    std::shared_ptr<Sheet> shownSheet() const { return _overlay.sheet() ? _overlay.sheet() : _host.sheet(); }

    bool holdsTypedText() const { return _host.sheet() && _host.sheet()->holdsTypedText(); }
    bool isTooSmall() const { return _size.width < leastSize.width || _size.height < leastSize.height; }
    bool noticeOutcomes();
    Picture composeAll(Size size);
    Picture composeTooSmall(Size size) const;
    std::size_t margin() const;
    std::vector<Line> composeBody(std::size_t height, Picture& picture);
    Picture composeBottom(std::size_t width);
    TitleBar titleBar() const;
    std::vector<KeyHint> pageHints() const;

    void handleOnPage(const Event& event);
    bool move(const Event& event);
    void command(const Event& event);
    void click(const Event& event);
    void clickTitleBar(const Event& event);
    void useRow();
    void enterRow();
    void tap(platform::NSIndexPath path);
    void goBack();
    void touchRightButton();
    void reload();
    void takeBack(const platform::Result<std::string>& outcome);
    void resetRow();
    void showFilesAnew();
    void openFind();
    void goTo(std::size_t hit);
    void findAgain(bool backwards);
    void openHelp();
    bool hasRightButton() const;

    ScreenText _text;
    Notices _notices;
    Overlay _overlay;
    OpenedPhone& _phone;
    LiveServices _services;
    NoticingApplication _application;
    std::unique_ptr<SettingsSession> _session;
    ScreenHost _host;
    Finder _finder;
    /// What was found last, and which of it was gone to.
    std::vector<FindHit> _found;
    std::size_t _foundAt = 0;
    Size _size;
    bool _isOver = false;
    std::vector<std::string> _observedFiles;
    platform::UINavigationController _navigation;
};

}  // namespace hosts::terminal::screen
