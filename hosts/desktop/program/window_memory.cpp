// SPDX-License-Identifier: MIT
#include "hosts/desktop/program/window_memory.h"

namespace hosts::desktop {

WindowMemory::WindowMemory(const QString& key, const QString& device)
    : _sizeKey(key + QStringLiteral("/size-") + device),
      _pathKey(key + QStringLiteral("/path")),
      _settings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("trivel3"),
                QStringLiteral("trivel3-settings")) {}

QSize WindowMemory::size() const {
    return _settings.value(_sizeKey).toSize();
}

QStringList WindowMemory::path() const {
    return _settings.value(_pathKey).toStringList();
}

void WindowMemory::remember(QSize size, const QStringList& path) {
    _settings.setValue(_sizeKey, size);
    _settings.setValue(_pathKey, path);
}

}  // namespace hosts::desktop
