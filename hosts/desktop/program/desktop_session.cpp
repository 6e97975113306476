// SPDX-License-Identifier: MIT
#include "hosts/desktop/program/desktop_session.h"

namespace hosts::desktop {

DesktopSession::DesktopSession(const Outside& outside)
    : _outside(outside),
      _session(_outside.services, _outside.systemImage, _outside.shape),
      _navigation(_outside.handOver) {}

DesktopSession::~DesktopSession() = default;

bool DesktopSession::open(QSize size, std::string& error) {
    if (!_session.loadPane(error)) return false;
    auto root = _session.makeRootPage(error);
    if (!root) return false;
    _window = std::make_unique<SettingsWindow>(_navigation);
    if (const auto loaded = _window->load(size); !loaded) {
        error = loaded.error().text();
        return false;
    }
    _window->view().setTitle(QString::fromStdString(root->title()));
    _navigation.open(std::move(root));
    return true;
}

void DesktopSession::watchFiles() {
    std::string error;
    // A pane that tells of no files has none to watch.
    const auto access = _session.preferenceAccess(error);
    if (!access) return;
    std::vector<std::string> paths;
    for (const auto& file : access->observedFiles())
        paths.push_back(file.path);
    _watch = std::make_unique<SettingsWatch>(_outside.files, _outside.phoneFolder, std::move(paths));
    QObject::connect(_watch.get(), &SettingsWatch::changed, &_navigation, &Navigation::redrawVisibleRows);
}

}  // namespace hosts::desktop
