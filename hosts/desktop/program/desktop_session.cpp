// SPDX-License-Identifier: MIT
#include "hosts/desktop/program/desktop_session.h"

#include <utility>

#include "hosts/session/printable.h"

namespace hosts::desktop {
namespace {

constexpr int gatheringTime = 10;  // ms

QString shownText(const std::string& text) {
    return QString::fromStdString(printable(text));
}

}  // namespace

DesktopSession::~DesktopSession() = default;

platform::Result<platform::Done> DesktopSession::open(QSize size) {
    auto session = SettingsSession::load(_outside.services, _outside.phone.installation.systemImage, _outside.shape);
    if (!session) return std::move(session).error();
    _session = *std::move(session);
    auto root = _session->makeRootPage();
    if (!root) return std::move(root).error();
    _window = std::make_unique<SettingsWindow>(_navigation);
    const auto loaded = _window->load(size, _outside.shape.screen.bounds.width);
    if (!loaded) return loaded;
    _window->view().setTitle(shownText(nameOf(_outside.phone)) + QStringLiteral(" – ") +
                             QString::fromStdString((*root)->title()));
    // The cells of a page are produced after the handler of what has changed them has returned, for the next picture.
    QObject::connect(&_window->view(), &QQuickWindow::afterAnimating, &_navigation, [this] { closeTurn(); });
    // Rows that look as before need no picture, but what has become of the act may have to be told.
    QObject::connect(&_navigation, &Navigation::acted, &_window->view(), [this] { _window->view().update(); });
    takeOnCommands();
    // What the pages say is found out when the user first wants to know, and then once for each search.
    QObject::connect(&_navigation.find(), &Find::openChanged, &_navigation, [this] { _finder.forget(); });
    _navigation.useFinder(_finder);
    _navigation.useDefaults(_session->defaults());
    _navigation.open(*std::move(root));
    if (_outside.phone.isReport) offerToTakeBackTries();
    return platform::Done();
}

void DesktopSession::offerToTakeBackTries() {
    _navigation.tell({.about = Banner::About::report,
                      .text = QStringLiteral(
                          "Support report: changes are tries, nobody is told of them. It has ticked applications, no "
                          "exceptions."),
                      .stays = true,
                      .action = QStringLiteral("Take Back"),
                      .act = [this] { forgetTries(); }});
}

void DesktopSession::forgetTries() {
    const auto forgotten = _outside.phone.forgetTries();
    showFilesAnew();
    if (!forgotten) return _navigation.tell({.text = shownText(forgotten.error().text()), .isProblem = true});
    _navigation.tell(
        {.about = Banner::About::undo, .text = QStringLiteral("All tries are taken back."), .passes = true});
}

void DesktopSession::takeOnCommands() {
    Commands& commands = _navigation.commands();
    commands.use(
        Commands::Undo, [this] { tellTakenBack(_session->undo()); }, [this] { return _session->hasTurnToUndo(); });
    commands.use(
        Commands::Redo, [this] { tellTakenBack(_session->redo()); }, [this] { return _session->hasTurnToRedo(); });
    _navigation.useReset([this](const auto& keys, const auto& label) { tellReset(_session->reset(keys, label)); },
                         [this](const auto& keys) { return _session->canReset(keys); });
}

// Where a change did not come about, the rows show what the file still holds. They are read for while the turn is not
// over: what was read before it failed may be no more than defaults.
void DesktopSession::closeTurn() {
    Outcomes& outcomes = *_outside.phone.outcomes;
    _session->land();
    const Navigation::Act act = _navigation.takeAct();
    const bool hasSaved = outcomes.takeSaved();
    const auto unsaved = outcomes.takeUnsaved();
    // What a page itself has tried to mend takes nothing from what the user may try again.
    const bool isNews = unsaved && (act.again || unsaved != _unsaved);
    if (unsaved || hasSaved) _unsaved = unsaved;
    if (unsaved) _navigation.redrawVisibleRows();
    if (hasSaved) showChange(act.page);
    if (hasSaved) _navigation.banners().withdraw(Banner::About::change);
    const auto unread = outcomes.takeUnread();
    const bool hasRead = _session->drawn();
    if (unread) tellDefaults(unread);
    if (hasRead && !unread && !_observedFiles.empty()) tellDefaults(_session->whyDefaults(_observedFiles));
    for (const std::string& remark : outcomes.takeRemarks())
        _navigation.tell({.text = shownText(remark)});
    if (isNews) tellUnsaved(*unsaved, act.again);
}

// What one page has changed is seen on the one beside it, as what another program has changed would be.
void DesktopSession::showChange(const Page* acting) {
    const auto seen = _navigation.seenPages();
    if (seen.size() < 2) return;
    for (Page* page : seen) {
        if (page != acting) bringUpToDate(*page);
    }
}

void DesktopSession::bringUpToDate(Page& page) {
    _session->bringUpToDate(page.controller());
    if (page.table()) page.table()->redrawVisibleRows();
}

void DesktopSession::tellUnsaved(const platform::Problem& problem, const std::function<bool()>& act) {
    Banner banner{.about = Banner::About::change, .text = shownText(unsavedText(problem)), .isProblem = true};
    if (act) {
        banner.action = QStringLiteral("Try again");
        banner.act = [this, act] {
            if (!act()) _navigation.tell({.text = QStringLiteral("Not saved: the row is no longer there")});
        };
    }
    _navigation.tell(std::move(banner));
}

// Once for as long as it holds, and not where the same has kept a change from being saved.
void DesktopSession::tellDefaults(const std::optional<platform::Problem>& why) {
    if (why == _defaults) return;
    _defaults = why;
    _navigation.banners().withdraw(Banner::About::settings);
    if (!why || (_unsaved && _unsaved->path == why->path && _unsaved->reason == why->reason)) return;
    _navigation.tell({.about = Banner::About::settings, .text = shownText(defaultsText(*why)), .isProblem = true});
}

void DesktopSession::watchFiles() {
    _observedFiles = _session->observedFiles();
    if (_observedFiles.empty()) return;
    _events = _outside.phone.phone->observe(_observedFiles, _session->observedNotifications());
    if (_events->descriptor() < 0) return;
    _soon.setSingleShot(true);
    _soon.setInterval(gatheringTime);
    QObject::connect(&_soon, &QTimer::timeout, &_soon, [this] { lookAtFiles(); });
    _eventsReady = std::make_unique<QSocketNotifier>(_events->descriptor(), QSocketNotifier::Read);
    QObject::connect(_eventsReady.get(), &QSocketNotifier::activated, &_soon, [this] { takePhoneEvents(); });
    // What has changed between the first picture and now is in no event.
    _soon.start();
}

void DesktopSession::takePhoneEvents() {
    while (const auto event = _events->next()) {
        if (event->isLoss()) return noteLoss(*event);
    }
    if (!_soon.isActive()) _soon.start();
}

// What is seen stays as it is.
void DesktopSession::noteLoss(const PhoneEvent& loss) {
    if (loss.kind == PhoneEvent::Kind::gone) _eventsReady->setEnabled(false);
    _soon.stop();
    _navigation.tell({.about = Banner::About::phone, .text = shownText(lossText(loss)), .isProblem = true});
}

void DesktopSession::lookAtFiles() {
    tellDefaults(_session->whyDefaults(_observedFiles));
    if (!_session->hasChangedSinceDrawn(_observedFiles)) return;
    showFilesAnew();
}

void DesktopSession::showFilesAnew() {
    for (Page* page : _navigation.seenPages())
        _session->bringUpToDate(page->controller());
    _navigation.redrawVisibleRows();
    _finder.forget();
    if (_navigation.find().isOpen()) _navigation.find().refresh();
    _window->view().update();
}

void DesktopSession::tellTakenBack(const platform::Result<std::string>& outcome) {
    if (outcome) showFilesAnew();
    _navigation.tell({.about = Banner::About::undo,
                      .text = shownText(outcome ? *outcome : outcome.error().text()),
                      .isProblem = !outcome,
                      .passes = outcome.has_value()});
}

void DesktopSession::tellReset(const platform::Result<SettingsSession::DoneTurn>& outcome) {
    if (!outcome) return tellTakenBack(outcome.error());
    showFilesAnew();
    Banner banner{.about = Banner::About::undo, .text = shownText(outcome->text), .passes = true};
    if (outcome->turn != 0) {
        banner.action = QStringLiteral("Undo");
        banner.act = [this, turn = outcome->turn] { tellTakenBack(_session->undoTurn(turn)); };
    }
    _navigation.tell(std::move(banner));
}

}  // namespace hosts::desktop
