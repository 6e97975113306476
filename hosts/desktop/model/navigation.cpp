// SPDX-License-Identifier: MIT
#include "hosts/desktop/model/navigation.h"

#include <QQmlEngine>
#include <algorithm>
#include <utility>

#include "hosts/session/defaults.h"
#include "hosts/session/printable.h"
#include "hosts/session/title_path.h"
#include "platform/list/page_controller.h"

namespace hosts::desktop {
namespace {

// The row that has led to the page; null for none.
const platform::PSSpecifier* linkTo(const Page& page) {
    const auto* controller = dynamic_cast<const platform::PSViewController*>(&page.controller());
    return controller ? controller->specifier().get() : nullptr;
}

}  // namespace

Navigation::Navigation(HandOver& handOver) : _handOver(handOver), _controller(*this) {
    QQmlEngine::setObjectOwnership(&_banners, QQmlEngine::CppOwnership);
    QQmlEngine::setObjectOwnership(&_find, QQmlEngine::CppOwnership);
    QQmlEngine::setObjectOwnership(&_phones, QQmlEngine::CppOwnership);
    QQmlEngine::setObjectOwnership(&_menu, QQmlEngine::CppOwnership);
    QQmlEngine::setObjectOwnership(&_commands, QQmlEngine::CppOwnership);
    takeOnCommands();
}

// Those that the window can carry out by itself.
void Navigation::takeOnCommands() {
    _commands.use(Commands::Find, [this] { _find.begin({}); });
    _commands.use(Commands::Reload, [this] { current()->reload(); });
    _commands.use(Commands::OpenPhone, [this] { _phones.chooseFolder(); });
    _commands.use(Commands::ShowKeys, [this] { _commands.showSheet(Commands::KeysSheet); });
    _commands.use(Commands::About, [this] { _commands.showSheet(Commands::AboutSheet); });
    _commands.use(
        Commands::ResetPage,
        [this] {
            if (_reset) _reset(settingsOfPage(), {});
        },
        [this] { return _canReset && _canReset(settingsOfPage()); });
}

void Navigation::useReset(Reset reset, CanReset canReset) {
    _reset = std::move(reset);
    _canReset = std::move(canReset);
}

std::vector<std::string> Navigation::settingsOfPage() const {
    return _defaults ? _defaults->settingsOf(current()->controller()) : std::vector<std::string>();
}

void Navigation::openMenu(QPointF place) {
    _menu.show(tr("Menu"), _commands.menuItems(), place);
}

void Navigation::openRowMenu(int line, QPointF place) {
    const auto row = current()->table()->settingAt(line);
    if (!row) return;
    const auto keys = row->key ? std::vector{*row->key} : std::vector<std::string>();
    const bool can = _canReset && _canReset(keys);
    _menu.show(QString::fromStdString(row->label),
               {{tr("&Reset to Default"), {}, can, [this, keys, label = row->label] { _reset(keys, label); }}}, place);
}

Navigation::~Navigation() {
    for (const auto& page : _stack)
        page->letGo();
}

void Navigation::open(std::shared_ptr<platform::UIViewController> root) {
    _controller.pushViewController_animated(std::move(root), false);
    publish();
}

void Navigation::follow(const QStringList& titles) {
    for (const QString& title : titles) {
        if (!openPageTitled(*_controller.topViewController(), title.toStdString(), GreyedLinks::left)) break;
    }
    _isAnimated = false;
    publish();
}

platform::Result<platform::Done> Navigation::openPath(std::string_view path) {
    while (_controller.popViewControllerAnimated(false)) {
    }
    auto followed = followTitlePath(_controller, path);
    _isAnimated = false;
    publish();
    return followed;
}

void Navigation::useFinder(Finder& finder) {
    constexpr std::size_t mostHits = 30;
    _find.use(
        [this, &finder](const std::string& text) {
            return finder.find(text, mostHits, {current()->controller(), titles()});
        },
        [this](const FindHit& hit) { goTo(hit); });
}

void Navigation::goTo(const FindHit& hit) {
    const auto gone = goToPage(_controller, titles(), hit);
    _isAnimated = false;
    publish();
    if (!gone) return tell({.text = QString::fromStdString(printable(gone.error().text())), .isProblem = true});
    const auto row = rowOf(current()->controller(), hit);
    if (row && current()->table()) emit current()->rowWanted(current()->table()->lineOfRow(*row));
}

std::vector<std::string> Navigation::titles() const {
    std::vector<std::string> titles;
    for (std::size_t i = 1; i < _stack.size(); ++i)
        titles.push_back(_stack[i]->controller().title());
    return titles;
}

QStringList Navigation::path() const {
    QStringList titles;
    for (std::size_t i = 1; i < _stack.size(); ++i)
        titles.append(_stack[i]->title());
    return titles;
}

void Navigation::layOut(QSizeF first, QSizeF others, bool sideBySide) {
    _firstSize = first;
    _otherSize = others;
    for (const auto& page : _stack)
        giveRoom(*page);
    if (std::exchange(_isSideBySide, sideBySide) == sideBySide) return;
    _isAnimated = false;
    moveToPlaces();
    markOpenPage();
    emit sideBySideChanged();
}

void Navigation::giveRoom(Page& page) const {
    const QSizeF size = page.depth() == 0 ? _firstSize : _otherSize;
    page.resize(size.width(), size.height());
}

bool Navigation::isSeen(const Page* page) const {
    return page == current() || (_isSideBySide && page == first());
}

std::vector<Page*> Navigation::seenPages() const {
    std::vector<Page*> seen;
    for (const auto& page : _stack) {
        if (isSeen(page.get())) seen.push_back(page.get());
    }
    return seen;
}

void Navigation::redrawVisibleRows() {
    for (const auto& page : _stack) {
        if (page->table()) page->table()->redrawVisibleRows();
    }
}

// What has led to another page is over, on whichever page it was; a switch never leads anywhere.
Navigation::Act Navigation::takeAct() {
    Act taken;
    for (const auto& page : _stack) {
        const auto act = page->table() ? page->table()->takeAct() : std::nullopt;
        if (!act || !isSeen(page.get()) || (page != _stack.back() && !act->on)) continue;
        taken.page = page.get();
        taken.again = [act = *act, page = std::weak_ptr(page)] {
            const auto there = page.lock();
            return there && there->table()->repeat(act);
        };
    }
    return taken;
}

bool Navigation::back() {
    if (_isComposerShown) return false;
    return _controller.popViewControllerAnimated(true);
}

int Navigation::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(_shown.size());
}

QVariant Navigation::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || role != PageRole) return {};
    return QVariant::fromValue(_shown[static_cast<std::size_t>(index.row())].get());
}

QHash<int, QByteArray> Navigation::roleNames() const {
    return {{PageRole, "page"}};
}

void Navigation::didPush(platform::UIViewController& page, bool animated) {
    auto pushed = std::make_shared<Page>(page.shared_from_this(), current(), _defaults);
    QQmlEngine::setObjectOwnership(pushed.get(), QQmlEngine::CppOwnership);
    if (TableModel* const table = pushed->table()) {
        QQmlEngine::setObjectOwnership(table, QQmlEngine::CppOwnership);
        connect(table, &TableModel::acted, this, &Navigation::acted);
        table->askBeforeLinks([this, on = pushed.get()](const auto& link) { return comeBackTo(on, link); });
        connect(pushed.get(), &Page::rowMenuAsked, this, &Navigation::openRowMenu);
    }
    giveRoom(*pushed);
    _stack.push_back(std::move(pushed));
    // A page that takes the place of another is there at once.
    _isAnimated = animated && !(_willPublish && !_leaving.empty());
    publishLater();
}

void Navigation::didPop(platform::UIViewController&, platform::UIViewController&, bool animated) {
    _stack.back()->letGo();
    _leaving.push_back(std::move(_stack.back()));
    _stack.pop_back();
    _isAnimated = animated;
    publishLater();
}

// The page is told that it will appear after this call, and only then are its cells to be produced.
void Navigation::publishLater() {
    if (std::exchange(_willPublish, true)) return;
    QMetaObject::invokeMethod(
        this, [this] { publish(); }, Qt::QueuedConnection);
}

void Navigation::publish() {
    _willPublish = false;
    publishNewPages();
    moveToPlaces();
    markOpenPage();
    emit currentChanged();
}

void Navigation::publishNewPages() {
    for (const auto& page : _stack) {
        if (isShown(page.get())) continue;
        const int row = static_cast<int>(_shown.size());
        beginInsertRows({}, row, row);
        _shown.push_back(page);
        endInsertRows();
    }
}

void Navigation::moveToPlaces() {
    for (const auto& page : _stack)
        page->setPlace(isSeen(page.get()) ? Page::Seen : Page::Beneath, _isAnimated);
    // Copied: a page that leaves at once takes itself off the list.
    const std::vector<std::shared_ptr<Page>> leaving = _leaving;
    for (const auto& page : leaving) {
        const bool isInPlace = page->place() == Page::Away;
        page->setPlace(Page::Away, _isAnimated);
        if (isInPlace) forget(page.get());
    }
}

// A page that is touched while it has led on already is come back to first, as the user would by the back button; no
// further than to the page that the link leads to, where that is open.
bool Navigation::comeBackTo(const Page* page, const platform::PSSpecifier& link) {
    const auto from = std::ranges::find(_stack, page, [](const auto& each) { return each.get(); });
    if (from == _stack.end() || *from == _stack.back()) return true;
    const Page* const next = std::next(from)->get();
    const bool isOpen = linkTo(*next) == &link;
    const platform::UIViewController* const goal = isOpen ? &next->controller() : &page->controller();
    while (_controller.topViewController().get() != goal && _controller.popViewControllerAnimated(false)) {
    }
    if (isOpen) current()->takeKeys();
    return !isOpen;
}

void Navigation::markOpenPage() {
    if (_stack.empty() || !first()->table()) return;
    first()->table()->markOpen(_isSideBySide && _stack.size() > 1 ? linkTo(*_stack[1]) : nullptr);
}

bool Navigation::isShown(const Page* page) const {
    return std::ranges::any_of(_shown, [page](const auto& each) { return each.get() == page; });
}

void Navigation::pageLeft(Page* page) {
    if (std::ranges::none_of(_leaving, [page](const auto& each) { return each.get() == page; })) return;
    // Later: the page's own item is what tells us.
    QMetaObject::invokeMethod(
        this, [this, page] { forget(page); }, Qt::QueuedConnection);
}

void Navigation::forget(const Page* page) {
    auto leaving = std::ranges::find_if(_leaving, [page](const auto& each) { return each.get() == page; });
    if (leaving == _leaving.end()) return;
    // Kept until its row has gone.
    const std::shared_ptr<Page> gone = std::move(*leaving);
    _leaving.erase(leaving);
    auto shown = std::ranges::find(_shown, gone);
    if (shown == _shown.end()) return;
    const int row = static_cast<int>(std::distance(_shown.begin(), shown));
    beginRemoveRows({}, row, row);
    _shown.erase(shown);
    endRemoveRows();
}

void Navigation::didPresent(const std::shared_ptr<platform::UIViewController>& presented, bool animated) {
    auto composer = Composer::of(presented, _handOver);
    if (!composer) return;
    QQmlEngine::setObjectOwnership(composer.get(), QQmlEngine::CppOwnership);
    connect(composer.get(), &Composer::ended, this, &Navigation::tellOutcome);
    connect(composer.get(), &Composer::closeAgreed, this, &Navigation::closeAgreed);
    _banners.withdraw(Banner::About::composer);
    _composer = std::move(composer);
    _isComposerAnimated = animated;
    emit composerChanged();
    _isComposerShown = true;
    emit composerShownChanged();
}

void Navigation::didDismiss(bool animated) {
    if (!_isComposerShown) return;
    _banners.withdraw(Banner::About::composer);
    _isComposerShown = false;
    _isComposerAnimated = animated;
    emit composerShownChanged();
}

// What has opened is before the user's eyes.
void Navigation::tellOutcome(const ComposerOutcome& outcome) {
    if (outcome.weight == ComposerOutcome::Weight::plain) return;
    Banner banner{.about = Banner::About::composer,
                  .text = QString::fromStdString(printable(outcome.text)),
                  .isProblem = outcome.weight == ComposerOutcome::Weight::problem};
    if (outcome.beginAgain) {
        banner.action = tr("Begin Again");
        banner.act = outcome.beginAgain;
    }
    tell(std::move(banner));
}

void Navigation::composerLeft() {
    if (_isComposerShown || !_composer) return;
    // Later: the call comes from what draws the composer, or from the composer itself.
    _composer.release()->deleteLater();
    emit composerChanged();
}

}  // namespace hosts::desktop
