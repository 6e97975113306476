// SPDX-License-Identifier: MIT
#include "hosts/desktop/program/settings_watch.h"

#include <QDir>
#include <QFileInfo>

namespace hosts::desktop {
namespace {

constexpr int gatheringTime = 10;  // ms

// The folder itself or, while there is none, the nearest above it that is there.
QString existingFolder(QString path, const QString& root) {
    while (!QFileInfo(path).isDir() && path.size() > root.size())
        path = QFileInfo(path).path();
    return path;
}

}  // namespace

SettingsWatch::SettingsWatch(NotedFiles& files, std::string phoneFolder, std::vector<std::string> paths)
    : _files(files), _phoneFolder(std::move(phoneFolder)), _paths(std::move(paths)) {
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
    for (const std::string& path : _paths)
        watch(path);
}

void SettingsWatch::watch(const std::string& path) {
    const QString root = QString::fromStdString(_phoneFolder);
    const QString file = root + QString::fromStdString(path);
    const QString folder = existingFolder(QFileInfo(file).path(), root);
    if (!_watcher.directories().contains(folder)) _watcher.addPath(folder);
    if (QFileInfo::exists(file) && !_watcher.files().contains(file)) _watcher.addPath(file);
}

void SettingsWatch::look() {
    watchAll();
    bool isChanged = false;
    for (const std::string& path : _paths)
        isChanged |= _files.noteChange(path);
    if (isChanged) emit changed();
}

}  // namespace hosts::desktop
