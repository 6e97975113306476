// SPDX-License-Identifier: MIT
#include "hosts/desktop/program/window_memory.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <cmath>

namespace hosts::desktop {

QString folderKey(const std::string& folder) {
    constexpr int length = 16;
    const QString path = QFileInfo(QString::fromStdString(folder)).canonicalFilePath();
    const QByteArray hash = QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha256);
    return QString::fromLatin1(hash.toHex().left(length));
}

QSettings windowSettings() {
    return QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("trivel3"),
                     QStringLiteral("trivel3-settings"));
}

WindowMemory::WindowMemory(const QString& key, const QString& device)
    : _sizeKey(key + QStringLiteral("/size-") + device),
      _pathKey(key + QStringLiteral("/path")),
      _zoomKey(key + QStringLiteral("/zoom-") + device),
      _settings(windowSettings()) {}

QSize WindowMemory::size() const {
    return _settings.value(_sizeKey).toSize();
}

QStringList WindowMemory::path() const {
    return _settings.value(_pathKey).toStringList();
}

double WindowMemory::zoom() const {
    bool isNumber = false;
    const double zoom = _settings.value(_zoomKey).toDouble(&isNumber);
    return isNumber && std::isfinite(zoom) ? zoom : 1;
}

void WindowMemory::remember(QSize size, const QStringList& path, double zoom) {
    _settings.setValue(_sizeKey, size);
    _settings.setValue(_pathKey, path);
    zoom == 1 ? _settings.remove(_zoomKey) : _settings.setValue(_zoomKey, zoom);
}

}  // namespace hosts::desktop
