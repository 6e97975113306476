// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QKeyEvent>
#include <QObject>
#include <QQuickView>
#include <optional>
#include <string>

#include "hosts/desktop/model/navigation.h"
#include "hosts/desktop/program/desktop_taste.h"
#include "platform/foundation/result.h"

namespace hosts::desktop {

/// Whether there is a graphics processor to draw with, going by the machine's device files.
bool hasGraphicsProcessor(const std::string& deviceFolder = "/dev");

/// Picks what draws the window, and how its letters are drawn. To be called once there is an
/// application object, before the first window is made. What the user has set in Qt's environment
/// variables stays.
void chooseRenderer();

/// Sets up the application object, which has just been made: its names, its font, what draws its windows and what tells
/// of them.
void setUpApplication();

/// Lets the engine load what the program's windows are made of.
void importSettingsModule(QQmlEngine& engine);

/// The window with the pages in it.
class SettingsWindow : public QObject {
    Q_OBJECT

public:
    /// `navigation` outlives the window.
    explicit SettingsWindow(Navigation& navigation);

    /// Loads what the window is made of, for pages that are made for a screen of this width in points. The problem,
    /// when that fails, is one line.
    platform::Result<platform::Done> load(QSize size, double phoneWidth);

    QQuickView& view() { return _view; }

    void setTaste(const Taste& taste);
    void setDark(bool dark);
    void setHighContrast(bool high);
    /// The colour of what can be touched; nothing for the window's own.
    void setAccent(const std::optional<QColor>& accent);
    /// How large texts are, 1 being usual.
    void setTextScale(double scale);
    /// How much larger they are than that because the user has said so in this window, by keys or wheel: 1, unless it
    /// is one of some steps about it. What comes out stays within the bounds of a taste.
    double zoom() const { return _zoom; }
    void setZoom(double zoom);
    void setReducedMotion(bool reduced);

    /// The user knows where the focus is, and the next key acts there. For who sets it from outside.
    void showFocus();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool isKept(const QKeyEvent& key);
    void takeOnCommands();
    void zoomBy(int steps);
    void applyTextScale();

    Navigation& _navigation;
    QQuickView _view;
    double _textScale = 1;
    double _zoom = 1;
};

}  // namespace hosts::desktop
