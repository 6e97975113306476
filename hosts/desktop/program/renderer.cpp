// SPDX-License-Identifier: MIT
#include "hosts/desktop/program/renderer.h"

#include <QDir>
#include <QGuiApplication>
#include <QQuickWindow>
#include <cmath>

namespace hosts::desktop {
namespace {

bool isChosenByUser() {
    for (const char* variable : {"QT_QUICK_BACKEND", "QMLSCENE_DEVICE", "QSG_RHI_BACKEND"}) {
        if (qEnvironmentVariableIsSet(variable)) return true;
    }
    return false;
}

}  // namespace

// The kernel's own drivers all have render nodes; the others have names of their own.
bool hasGraphicsProcessor(const std::string& deviceFolder) {
    const QDir devices(QString::fromStdString(deviceFolder));
    if (!QDir(devices.filePath(QStringLiteral("dri"))).entryList({"renderD*"}, QDir::System | QDir::Files).isEmpty()) {
        return true;
    }
    return !devices.entryList({"nvidiactl", "dxg", "mali*", "kgsl-*", "pvr*"}, QDir::System | QDir::Files).isEmpty();
}

void chooseRenderer() {
    // At a broken number of pixels a point, the system's own drawing of letters leaves uneven gaps, and
    // the renderer without a graphics processor uneven lines.
    const double scale = qGuiApp->devicePixelRatio();
    const bool isWhole = scale == std::floor(scale);
    QQuickWindow::setTextRenderType(isWhole ? QQuickWindow::NativeTextRendering : QQuickWindow::QtTextRendering);
    // Without a processor of its own, the graphics library compiles and runs shaders on the main one:
    // the first picture then takes several times as long as with Qt's renderer for that case.
    if (isWhole && !isChosenByUser() && !hasGraphicsProcessor()) {
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    }
}

}  // namespace hosts::desktop
