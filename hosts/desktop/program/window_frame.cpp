// SPDX-License-Identifier: MIT
#include "hosts/desktop/program/window_frame.h"

#include <QGuiApplication>
#include <QPalette>

namespace hosts::desktop {

void colourFrame(QWindow& window, const QColor& ground, const QColor& text) {
    QPalette palette = QGuiApplication::palette();
    if (palette.color(QPalette::Window) == ground && palette.color(QPalette::WindowText) == text) return;
    palette.setColor(QPalette::Window, ground);
    palette.setColor(QPalette::WindowText, text);
    QGuiApplication::setPalette(palette);
    // A frame takes its colours as it is made.
    if (!window.handle() || !QGuiApplication::platformName().startsWith(QLatin1String("wayland"))) return;
    window.setFlag(Qt::FramelessWindowHint, true);
    window.setFlag(Qt::FramelessWindowHint, false);
}

}  // namespace hosts::desktop
