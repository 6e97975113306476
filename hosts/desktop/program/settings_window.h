// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QQuickView>
#include <string>

#include "hosts/desktop/model/navigation.h"

namespace hosts::desktop {

/// The window with the pages in it.
class SettingsWindow : public QObject {
    Q_OBJECT

public:
    /// `navigation` outlives the window.
    explicit SettingsWindow(Navigation& navigation);

    /// Loads what the window is made of. False, with one line in `error`, when that fails.
    bool load(QSize size, std::string& error);

    QQuickView& view() { return _view; }

    void setDark(bool dark);
    void setReducedMotion(bool reduced);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    Navigation& _navigation;
    QQuickView _view;
};

}  // namespace hosts::desktop
