// SPDX-License-Identifier: MIT
#include "hosts/desktop/program/settings_watch.h"

#include <fcntl.h>

#include "hosts/phones/confined_open.h"

namespace hosts::desktop {
namespace {

constexpr int gatheringTime = 10;  // ms

}  // namespace

SettingsWatch::SettingsWatch(NotedFiles& files, const std::string& phoneFolder, std::vector<std::string> paths)
    : _files(files), _root(::open(phoneFolder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)), _paths(std::move(paths)) {
    for (const std::string& path : _paths)
        _files.noteChange(path);
    _soon.setSingleShot(true);
    _soon.setInterval(gatheringTime);
    connect(&_soon, &QTimer::timeout, this, &SettingsWatch::look);
    connect(&_watcher, &QFileSystemWatcher::directoryChanged, &_soon, qOverload<>(&QTimer::start));
    connect(&_watcher, &QFileSystemWatcher::fileChanged, &_soon, qOverload<>(&QTimer::start));
    watchAll();
}

// A file that has been replaced is another file, and a folder that was missing may be there by now.
void SettingsWatch::watchAll() {
    for (const std::string& path : _paths) {
        watchFolderOf(path);
        watch(path, O_PATH);
    }
}

// The folder itself or, while there is none, the nearest above it that is there.
void SettingsWatch::watchFolderOf(std::string path) {
    do
        path.resize(path.rfind('/'));
    while (!watch(path + "/", O_PATH | O_DIRECTORY) && !path.empty());
}

bool SettingsWatch::watch(const std::string& path, int flags) {
    const std::string place = machinePath(openConfined(FileCalls::system(), _root.get(), path, flags));
    if (place.empty()) return false;
    const QString name = QString::fromStdString(place);
    if (!_watcher.directories().contains(name) && !_watcher.files().contains(name)) _watcher.addPath(name);
    return true;
}

void SettingsWatch::look() {
    watchAll();
    bool isChanged = false;
    for (const std::string& path : _paths)
        isChanged |= _files.noteChange(path);
    if (isChanged) emit changed();
}

}  // namespace hosts::desktop
