// SPDX-License-Identifier: MIT
#include "hosts/desktop/program/desktop_session.h"

#include <utility>

namespace hosts::desktop {
namespace {

constexpr int gatheringTime = 10;  // ms

}  // namespace

DesktopSession::~DesktopSession() = default;

platform::Result<platform::Done> DesktopSession::open(QSize size) {
    auto session = SettingsSession::load(_outside.services, _outside.phone.installation.systemImage, _outside.shape);
    if (!session) return std::move(session).error();
    _session = *std::move(session);
    auto root = _session->makeRootPage();
    if (!root) return std::move(root).error();
    _window = std::make_unique<SettingsWindow>(_navigation);
    const auto loaded = _window->load(size);
    if (!loaded) return loaded;
    _window->view().setTitle(QString::fromStdString((*root)->title()));
    // The cells of a page are produced after the handler of what has changed them has returned, for the next picture.
    QObject::connect(&_window->view(), &QQuickWindow::afterAnimating, &_navigation, [this] { closeTurn(); });
    _navigation.open(*std::move(root));
    return platform::Done();
}

// Where a change did not come about, the rows show what the file still holds.
void DesktopSession::closeTurn() {
    if (const auto notice = _outside.phone.outcomes->takeNotice()) {
        _navigation.tell(QString::fromStdString(notice->text));
        if (notice->isUnsaved) _navigation.redrawVisibleRows();
    }
    _session->drawn();
}

void DesktopSession::watchFiles() {
    _observedFiles = _session->observedFiles();
    if (_observedFiles.empty()) return;
    _events = _outside.phone.phone->observe(_observedFiles);
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
        if (event->kind == PhoneEvent::Kind::gone) return notePhoneGone(event->name);
    }
    if (!_soon.isActive()) _soon.start();
}

// What is seen stays as it is: there is nothing to look at any more.
void DesktopSession::notePhoneGone(const std::string& why) {
    _eventsReady->setEnabled(false);
    _soon.stop();
    _navigation.tell(QString::fromStdString(phoneGoneText(why)));
}

void DesktopSession::lookAtFiles() {
    if (!_session->hasChangedSinceDrawn(_observedFiles)) return;
    if (Page* const page = _navigation.current()) _session->bringUpToDate(page->controller());
    _navigation.redrawVisibleRows();
    // Rows that look as before need no picture, but what was read for them may have to be told.
    _window->view().update();
}

}  // namespace hosts::desktop
