// SPDX-License-Identifier: MIT
#pragma once

#include <QSettings>
#include <QSize>
#include <QStringList>
#include <string>

namespace hosts::desktop {

/// A short name for a folder, the same by whichever path it is reached.
QString folderKey(const std::string& folder);

/// Where the windows keep what they remember.
QSettings windowSettings();

/// What a window of a phone was like when it was last closed.
class WindowMemory {
public:
    /// `key` stands for the phone; a window is remembered for each shape of device.
    WindowMemory(const QString& key, const QString& device);

    /// Empty when there is nothing to remember.
    QSize size() const;
    /// The titles of the pages below the first.
    QStringList path() const;

    /// How much larger texts are than usual; 1 when there is nothing to remember.
    double zoom() const;

    void remember(QSize size, const QStringList& path, double zoom);

private:
    QString _sizeKey;
    QString _pathKey;
    QString _zoomKey;
    QSettings _settings;
};

}  // namespace hosts::desktop
