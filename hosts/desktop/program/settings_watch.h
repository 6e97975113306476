// SPDX-License-Identifier: MIT
#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>
#include <string>
#include <vector>

#include "hosts/desktop/program/noted_files.h"
#include "hosts/system/descriptor.h"

namespace hosts::desktop {

/// Tells when another process has changed one of the pane's files.
class SettingsWatch : public QObject {
    Q_OBJECT

public:
    /// `paths` are the phone's; `phoneFolder` is where its root lies on this machine, and nothing
    /// outside of it is watched. `files` outlives the object.
    SettingsWatch(NotedFiles& files, const std::string& phoneFolder, std::vector<std::string> paths);

signals:
    void changed();

private:
    void watchAll();
    void watchFolderOf(std::string path);
    /// False when the path leads to no such thing on the phone.
    bool watch(const std::string& path, int flags);
    void look();

    NotedFiles& _files;
    Descriptor _root;
    std::vector<std::string> _paths;
    QFileSystemWatcher _watcher;
    /// Gathers the several reports that one change of a folder makes.
    QTimer _soon;
};

}  // namespace hosts::desktop
