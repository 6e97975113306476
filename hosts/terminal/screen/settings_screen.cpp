// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/settings_screen.h"

#include <algorithm>
#include <iterator>

#include "hosts/terminal/screen/find_sheet.h"
#include "hosts/terminal/screen/help_sheet.h"
#include "hosts/terminal/screen/mail_sheet.h"
#include "hosts/terminal/screen/post_sheet.h"
#include "platform/list/list_controller.h"
#include "platform/list/table_cell.h"
#include "platform/ui/button.h"

namespace hosts::terminal::screen {
namespace {

constexpr std::size_t titleBarHeight = 1;
// Rows wider than this are hard to follow from label to state, however wide the terminal is.
constexpr std::size_t mostBodyWidth = 100;
constexpr std::size_t mostNoticeLines = 5;
constexpr std::ptrdiff_t wheelLines = 3;
constexpr const char* beginAgainKey = "b";
constexpr std::size_t mostHits = 30;
// In two lines of the smallest screen.
constexpr const char* reportText = "Support report: changes are tries; it has ticked applications, no exceptions";

std::string text(const Size& size, const Glyphs& glyphs) {
    return std::to_string(size.width) + std::string(glyphs.times) + std::to_string(size.height);
}

}  // namespace

bool NoticingApplication::openURL(std::string_view url) {
    const auto opened = _opener.open(url);
    if (opened) {
        _notices.say("Opened " + std::string(url));
    } else {
        _notices.warn("Not opened: " + std::string(url) + " (" + opened.error().text() + ")");
    }
    return opened.has_value();
}

SettingsScreen::SettingsScreen(OpenedPhone& phone, const TextStyle& style)
    : _text(style),
      _phone(phone),
      _services(phone),
      _application(_services.opener, _notices),
      _host(_text, [this](const auto& presented) { return sheetFor(presented); }),
      _finder(phone),
      _navigation(_host) {}

platform::Result<platform::Done> SettingsScreen::start() {
    const SessionServices live = _services.forSession();
    auto session = SettingsSession::load(
        {live.files, live.notifications, _application, live.device, live.listener, live.history, live.phone},
        _phone.installation.systemImage, _phone.shape);
    if (!session) return std::move(session).error();
    _session = *std::move(session);
    auto root = _session->makeRootPage();
    if (!root) return std::move(root).error();
    _observedFiles = _session->observedFiles();
    _host.useDefaults(_session->defaults());
    _navigation.pushViewController_animated(*std::move(root), false);
    return platform::Done();
}

bool SettingsScreen::noteFilesChanged(std::span<const std::string> paths) {
    const bool isChanged = _session->hasChangedSinceDrawn(paths);
    if (isChanged) showFilesAnew();
    return isChanged;
}

std::shared_ptr<Sheet> SettingsScreen::sheetFor(const std::shared_ptr<platform::UIViewController>& presented) {
    if (auto mail = std::dynamic_pointer_cast<platform::MFMailComposeViewController>(presented)) {
        return std::make_shared<MailSheet>(ComposedMail(std::move(mail), _services.handOver), _notices, _overlay,
                                           _text);
    }
    if (auto post = std::dynamic_pointer_cast<platform::SLComposeViewController>(presented)) {
        return std::make_shared<PostSheet>(ComposedPost(std::move(post), _services.handOver), _notices, _overlay,
                                           _text);
    }
    return nullptr;
}

Picture SettingsScreen::compose(Size size) {
    _size = size;
    Picture picture = isTooSmall() ? composeTooSmall(size) : composeAll(size);
    _session->land();
    // What is told takes lines from the rows, whose files may only have been read for this very picture.
    if (noticeOutcomes() && !isTooSmall()) picture = composeAll(size);
    _session->drawn();
    return picture;
}

// The pages themselves are silent about it. Whether there is anything to tell.
bool SettingsScreen::noticeOutcomes() {
    auto notice = _services.outcomes.takeNotice();
    if (!notice) return false;
    notice->isProblem ? _notices.warn(std::move(notice->text)) : _notices.say(std::move(notice->text));
    return true;
}

Picture SettingsScreen::composeTooSmall(Size size) const {
    const std::string wanted = "Too small: " + text(size, _text.glyphs()) + "; at least " +
                               text(leastSize, _text.glyphs()) + " is needed (" +
                               (holdsTypedText() ? "Q quits and discards the post" : "q quits") + ")";
    Picture picture;
    for (std::string& line : _text.lines(wanted, size.width))
        picture.add(std::move(line));
    picture.lines.resize(size.height);
    return picture;
}

Picture SettingsScreen::composeAll(Size size) {
    const Picture bottom = composeBottom(size.width);
    Picture picture;
    const std::vector<Line> body = composeBody(size.height - titleBarHeight - bottom.lines.size(), picture);
    picture.lines.push_back(titleBar().compose(size.width, _text));
    std::ranges::copy(body, std::back_inserter(picture.lines));
    if (bottom.caret) picture.caret = Caret{picture.lines.size() + bottom.caret->line, bottom.caret->column};
    std::ranges::copy(bottom.lines, std::back_inserter(picture.lines));
    return picture;
}

// In the middle of a terminal that is wider than is good for reading.
std::size_t SettingsScreen::margin() const {
    return (_size.width - std::min(_size.width, mostBodyWidth)) / 2;
}

std::vector<Line> SettingsScreen::composeBody(std::size_t height, Picture& picture) {
    const Size size{std::min(_size.width, mostBodyWidth), height};
    const std::shared_ptr<Sheet> sheet = shownSheet();
    Picture body;
    if (sheet) {
        body = sheet->compose(size);
    } else {
        body.lines = _host.top().compose(size);
    }
    body.lines.resize(height);
    for (Line& line : body.lines)
        line.indent = margin();
    if (body.caret && body.caret->line < height) {
        picture.caret = Caret{body.caret->line + titleBarHeight, body.caret->column + margin()};
    }
    return std::move(body.lines);
}

// What the phone is, where that is no phone, and the key line, which makes room for what there is to tell.
Picture SettingsScreen::composeBottom(std::size_t width) {
    const std::shared_ptr<Sheet> sheet = shownSheet();
    Picture bottom;
    if (_phone.isReport && !sheet) {
        for (const std::string& line : _text.lines(reportText, width - 2))
            bottom.add(" " + line, Ink::strong);
    }
    if (const auto& notice = _notices.current()) {
        for (const std::string& line : _text.firstLines(notice->text, width - 2, mostNoticeLines))
            bottom.add(" " + line, notice->isWarning ? Ink::warning : Ink::strong);
        if (notice->beginAgain)
            bottom.lines.push_back(keyLine({{beginAgainKey, "Begin again with this e-mail"}}, width));
        return bottom;
    }
    bottom.lines.push_back(keyLine(sheet ? sheet->hints() : pageHints(), width));
    return bottom;
}

Line SettingsScreen::waitingLine(std::size_t width) const {
    constexpr std::size_t besides = 14;  // columns of the key, its meaning and what is between
    const std::string sentence = "Waiting for " + _phone.phone->identity().name;
    return keyLine({{"", _text.fitted(sentence, width - besides)}, {"Esc", "Stop"}}, width);
}

TitleBar SettingsScreen::titleBar() const {
    if (const std::shared_ptr<Sheet> sheet = shownSheet()) return {{}, sheet->title(), false};
    PageView* const below = _host.below();
    return {below ? below->page().title() : std::string(), _host.top().page().title(), hasRightButton()};
}

std::vector<KeyHint> SettingsScreen::pageHints() const {
    std::vector<KeyHint> hints{{"Enter", "Tap"}};
    if (_host.below()) hints.push_back({std::string(_text.glyphs().leftKey), "Back"});
    hints.push_back({"?", "Help"});
    hints.push_back({"q", "Quit"});
    hints.push_back({"/", "Find"});
    hints.push_back({std::string(_text.glyphs().upDownKeys), "Move"});
    if (hasRightButton()) hints.push_back({"h", "Share"});
    hints.push_back({"r", "Reload"});
    return hints;
}

void SettingsScreen::handle(const Event& event) {
    const auto beginAgain = _notices.current() ? _notices.current()->beginAgain : nullptr;
    _notices.clear();
    // What cannot be seen is not changed.
    if (isTooSmall()) {
        _isOver = event.is(holdsTypedText() ? 'Q' : 'q');
        return;
    }
    if (beginAgain && event.character == beginAgainKey) {
        beginAgain();
    } else if (const std::shared_ptr<Sheet> sheet = shownSheet()) {
        Event within = event;
        within.line -= std::min(within.line, titleBarHeight);
        within.column -= std::min(within.column, margin());
        sheet->handle(within);
    } else {
        handleOnPage(event);
    }
    noticeOutcomes();
}

void SettingsScreen::handleOnPage(const Event& event) {
    if (!move(event)) command(event);
}

bool SettingsScreen::move(const Event& event) {
    PageView& view = _host.top();
    switch (event.key) {
        case Key::up:
            view.moveRows(-1);
            return true;
        case Key::down:
            view.moveRows(1);
            return true;
        case Key::pageUp:
            view.movePages(-1);
            return true;
        case Key::pageDown:
            view.movePages(1);
            return true;
        case Key::home:
            view.moveToFirst();
            return true;
        case Key::end:
            view.moveToLast();
            return true;
        case Key::wheelUp:
            view.scrollLines(-wheelLines);
            return true;
        case Key::wheelDown:
            view.scrollLines(wheelLines);
            return true;
        default:
            return false;
    }
}

void SettingsScreen::command(const Event& event) {
    if (event.key == Key::enter || event.is(' ')) return useRow();
    if (event.key == Key::right) return enterRow();
    if (event.key == Key::left || event.key == Key::escape || event.key == Key::backspace) return goBack();
    if (event.key == Key::click) return click(event);
    if (event.is('h')) return touchRightButton();
    if (event.is('r')) return reload();
    if (event.is('u')) return takeBack(_session->undo());
    if (event.is('U')) return takeBack(_session->redo());
    if (event.is('R')) return resetRow();
    if (event.is('/')) return openFind();
    if (event.is('n') || event.is('N')) return findAgain(event.is('N'));
    if (event.is('?')) return openHelp();
    if (event.is('q')) quit();
}

void SettingsScreen::quit() {
    const auto leave = [this] { _isOver = true; };
    holdsTypedText() ? _host.sheet()->askToDrop(leave) : leave();
}

void SettingsScreen::useRow() {
    if (const auto path = _host.top().cursor()) tap(*path);
}

// The way there, as Left is the way back: other rows are not used by it.
void SettingsScreen::enterRow() {
    const auto path = _host.top().cursor();
    const auto cell = path ? _host.top().cellAt(*path) : nullptr;
    if (cell && RowLook::of(*cell).leadsOn()) tap(*path);
}

// A tap on a row lands on its switch, where it has one.
void SettingsScreen::tap(platform::NSIndexPath path) {
    // Held here: the tap may put another page on top, or release this one.
    const std::shared_ptr<platform::UIViewController> page = _navigation.topViewController();
    PageView& view = _host.top();
    const auto cell = std::dynamic_pointer_cast<platform::PSTableCell>(view.cellAt(path));
    if (cell && !cell->isCellEnabled()) _notices.say("This row is greyed: it has no effect as things are set now");
    if (cell && cell->isSwitch()) {
        cell->userMovedSwitch(!cell->isOn());
        // Where writing has failed, the switch goes back to what the file says.
        view.noteCellOld(path);
    } else if (platform::UITableView* table = tableOfPage(*page)) {
        table->touchRowAtIndexPath(path);
    }
}

void SettingsScreen::goBack() {
    if (!_navigation.popViewControllerAnimated(true)) _notices.say("This is the first page; q quits");
}

bool SettingsScreen::hasRightButton() const {
    return rightButtonOf(_host.top().page()) != nullptr;
}

void SettingsScreen::touchRightButton() {
    platform::UIButton* const button = rightButtonOf(_host.top().page());
    if (!button) return _notices.say("This page has no heart button");
    button->sendActionsForControlEvents(platform::UIControlEventTouchUpInside);
}

void SettingsScreen::reload() {
    if (auto* list = dynamic_cast<platform::PSListController*>(&_host.top().page())) list->reloadSpecifiers();
    _host.top().noteRowsMoved();
    _notices.say("Loaded again");
}

void SettingsScreen::takeBack(const platform::Result<std::string>& outcome) {
    if (!outcome) return _notices.warn(outcome.error().text());
    _notices.say(*outcome);
    showFilesAnew();
}

void SettingsScreen::resetRow() {
    const auto path = _host.top().cursor();
    auto* const list = dynamic_cast<platform::PSListController*>(&_host.top().page());
    const auto row = list && path ? list->specifierAtIndexPath(*path) : nullptr;
    const Defaults* const defaults = _session->defaults();
    const auto key = row && defaults ? defaults->settingOf(*row) : std::nullopt;
    if (!key) return _notices.say("This row has no default to go back to");
    const auto outcome = _session->reset(std::vector{*key}, row->name());
    if (!outcome) return _notices.warn(outcome.error().text());
    _notices.say(outcome->text + (outcome->turn == 0 ? "" : " u undoes it"));
    showFilesAnew();
}

void SettingsScreen::showFilesAnew() {
    _session->bringUpToDate(_host.top().page());
    _host.top().noteCellsOld();
}

void SettingsScreen::openFind() {
    // Another program may have changed what the pages say since the last search.
    _finder.forget();
    const auto search = [this](const std::string& text) {
        return _finder.find(text, mostHits, {_host.top().page(), _host.titles()});
    };
    const auto choose = [this](const std::vector<FindHit>& hits, std::size_t chosen) {
        _found = hits;
        goTo(chosen);
    };
    _overlay.show(std::make_shared<FindSheet>(
        _text, FindSheet::Does{.search = search, .close = [this] { _overlay.close(); }, .choose = choose}));
}

void SettingsScreen::goTo(std::size_t hit) {
    _foundAt = hit;
    const auto gone = goToPage(_navigation, _host.titles(), _found[hit]);
    if (!gone) return _notices.warn(gone.error().text());
    const auto row = rowOf(_host.top().page(), _found[hit]);
    if (!row) return _notices.say("'" + _found[hit].label + "' is no longer there");
    _host.top().moveTo(*row);
}

void SettingsScreen::findAgain(bool backwards) {
    if (_found.empty()) return _notices.say("Find something by / first");
    goTo((_foundAt + (backwards ? _found.size() - 1 : 1)) % _found.size());
}

void SettingsScreen::openHelp() {
    _overlay.show(std::make_shared<HelpSheet>(_text, [this] { _overlay.close(); }));
}

void SettingsScreen::click(const Event& event) {
    if (event.line < titleBarHeight) return clickTitleBar(event);
    const auto path = _host.top().rowOnLine(event.line - titleBarHeight);
    if (!path) return;
    _host.top().moveTo(*path);
    tap(*path);
}

void SettingsScreen::clickTitleBar(const Event& event) {
    switch (titleBar().partAt(event.column, _size.width, _text)) {
        case TitleBar::Part::back:
            return goBack();
        case TitleBar::Part::rightButton:
            return touchRightButton();
        case TitleBar::Part::title:
            break;
    }
}

}  // namespace hosts::terminal::screen
