// SPDX-License-Identifier: MIT
#include "hosts/desktop/program/settings_window.h"

#include <QEvent>
#include <QQmlEngine>
#include <QQuickItem>

// What qmltyperegistrar writes for the module; a static library's initialisers are otherwise dropped.
void qml_register_types_Trivel3_Settings();

namespace hosts::desktop {
namespace {

// Smaller, a label and a switch no longer stand side by side.
constexpr QSize smallestSize{260, 200};

void setShellProperty(QQuickView& view, const char* name, bool value) {
    if (QQuickItem* shell = view.rootObject()) shell->setProperty(name, value);
}

}  // namespace

SettingsWindow::SettingsWindow(Navigation& navigation) : _navigation(navigation) {
    qml_register_types_Trivel3_Settings();
    _view.engine()->addImportPath(QStringLiteral(":/qt/qml"));
    _view.setResizeMode(QQuickView::SizeRootObjectToView);
    _view.setMinimumSize(smallestSize);
    _view.installEventFilter(this);
    QObject::connect(_view.engine(), &QQmlEngine::quit, &_view, &QWindow::close);
}

bool SettingsWindow::load(QSize size, std::string& error) {
    _view.resize(size);
    _view.setInitialProperties({{QStringLiteral("navigation"), QVariant::fromValue(&_navigation)}});
    _view.setSource(QUrl(QStringLiteral("qrc:/qt/qml/Trivel3/Settings/Shell.qml")));
    if (_view.status() == QQuickView::Ready) return true;
    error = "the window cannot be made";
    for (const QQmlError& problem : _view.errors())
        error += ": " + problem.toString().toStdString();
    return false;
}

void SettingsWindow::setDark(bool dark) {
    setShellProperty(_view, "dark", dark);
}

void SettingsWindow::setReducedMotion(bool reduced) {
    setShellProperty(_view, "reducedMotion", reduced);
}

// Where the focus is matters to those who use the keyboard; to others the mark is in the way.
bool SettingsWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) setShellProperty(_view, "showsFocus", true);
    if (event->type() == QEvent::MouseButtonPress) setShellProperty(_view, "showsFocus", false);
    return QObject::eventFilter(watched, event);
}

}  // namespace hosts::desktop
