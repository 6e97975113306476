// SPDX-License-Identifier: MIT
#include "hosts/desktop/program/settings_window.h"

#include <QDir>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <iterator>

#include "hosts/desktop/accessible/accessible_tree.h"
#include "hosts/desktop/drawing/qt_values.h"
#include "hosts/desktop/program/window_frame.h"
#include "hosts/desktop/program/window_size.h"

// What qmltyperegistrar writes for the module; a static library's initialisers are otherwise dropped.
void qml_register_types_Trivel3_Settings();

namespace hosts::desktop {
namespace {

constexpr double usualFontSize = 17;

constexpr std::array zoomSteps{0.5, 0.67, 0.8, 0.9, 1.0, 1.1, 1.25, 1.5, 1.75, 2.0, 2.5, 3.0};

constexpr const char* showsFocus = "showsFocus";

constexpr std::array actingKeys{Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter};
constexpr std::array movingKeys{Qt::Key_Up,  Qt::Key_Down, Qt::Key_PageUp,  Qt::Key_PageDown, Qt::Key_Home,
                                Qt::Key_End, Qt::Key_Tab,  Qt::Key_Backtab, Qt::Key_Menu,     Qt::Key_F10};

void setShellProperty(QQuickView& view, const char* name, const QVariant& value) {
    if (QQuickItem* shell = view.rootObject()) shell->setProperty(name, value);
}

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

void setUpApplication() {
    QGuiApplication::setApplicationName(QStringLiteral("trivel3-settings"));
    QGuiApplication::setApplicationVersion(QStringLiteral(TRIVEL3_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("com.fenwary.trivel3.Settings"));
    QGuiApplication::setFont(systemFont(usualFontSize));
    chooseRenderer();
    installAccessibleTree();
}

void importSettingsModule(QQmlEngine& engine) {
    qml_register_types_Trivel3_Settings();
    engine.addImportPath(QStringLiteral(":/qt/qml"));
}

SettingsWindow::SettingsWindow(Navigation& navigation) : _navigation(navigation) {
    importSettingsModule(*_view.engine());
    _view.setResizeMode(QQuickView::SizeRootObjectToView);
    _view.setMinimumSize(smallestWindow);
    _view.installEventFilter(this);
    takeOnCommands();
    QObject::connect(&_navigation, &Navigation::closeAgreed, &_view, &QWindow::close);
}

void SettingsWindow::takeOnCommands() {
    Commands& commands = _navigation.commands();
    commands.use(Commands::LargerText, [this] { zoomBy(1); });
    commands.use(Commands::SmallerText, [this] { zoomBy(-1); });
    commands.use(Commands::UsualText, [this] { setZoom(1); });
    commands.use(Commands::OpenMenu, [this] {
        showFocus();
        emit _navigation.menuAsked();
    });
    commands.use(Commands::Close, [this] { _view.close(); });
}

platform::Result<platform::Done> SettingsWindow::load(QSize size, double phoneWidth) {
    _view.resize(size);
    _view.setInitialProperties({{QStringLiteral("navigation"), QVariant::fromValue(&_navigation)},
                                {QStringLiteral("phoneWidth"), phoneWidth}});
    _view.setSource(QUrl(QStringLiteral("qrc:/qt/qml/Trivel3/Settings/Shell.qml")));
    if (_view.status() == QQuickView::Ready) return platform::Done();
    std::string reason = "the window cannot be made";
    for (const QQmlError& problem : _view.errors())
        reason += ": " + problem.toString().toStdString();
    return platform::Problem{.reason = std::move(reason)};
}

void SettingsWindow::setTaste(const Taste& taste) {
    setDark(taste.dark);
    setHighContrast(taste.highContrast);
    setAccent(taste.accent);
    setTextScale(taste.textScale);
    setReducedMotion(taste.lessMotion);
    const QQuickItem* shell = _view.rootObject();
    if (!shell) return;
    colourFrame(_view, shell->property("frameColor").value<QColor>(),
                shell->property("frameTextColor").value<QColor>());
}

void SettingsWindow::setDark(bool dark) {
    setShellProperty(_view, "dark", dark);
}

void SettingsWindow::setHighContrast(bool high) {
    setShellProperty(_view, "highContrast", high);
}

void SettingsWindow::setAccent(const std::optional<QColor>& accent) {
    setShellProperty(_view, "accent", accent.value_or(QColor(Qt::transparent)));
}

void SettingsWindow::setTextScale(double scale) {
    _textScale = scale;
    applyTextScale();
}

// Whatever was remembered.
void SettingsWindow::setZoom(double zoom) {
    const auto nearest = std::ranges::min_element(zoomSteps, {}, [zoom](double step) { return std::abs(step - zoom); });
    _zoom = *nearest;
    applyTextScale();
}

void SettingsWindow::zoomBy(int steps) {
    const auto now = std::distance(zoomSteps.begin(), std::ranges::find(zoomSteps, _zoom));
    const auto last = static_cast<std::ptrdiff_t>(zoomSteps.size()) - 1;
    const double zoom = zoomSteps[static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(now + steps, 0, last))];
    // A step that is not to be seen would have to be gone back before anything is.
    const double shown = _textScale * _zoom;
    if (steps > 0 ? shown < largestTextScale : shown > smallestTextScale) setZoom(zoom);
}

void SettingsWindow::applyTextScale() {
    setShellProperty(_view, "textScale", std::clamp(_textScale * _zoom, smallestTextScale, largestTextScale));
}

void SettingsWindow::setReducedMotion(bool reduced) {
    setShellProperty(_view, "reducedMotion", reduced);
}

void SettingsWindow::showFocus() {
    setShellProperty(_view, showsFocus, true);
}

// Where the focus is matters to those who use the keyboard; to others the mark is in the way.
bool SettingsWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Close && !_navigation.mayClose()) {
        event->ignore();
        return true;
    }
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::TouchBegin) {
        setShellProperty(_view, showsFocus, false);
    }
    if (event->type() == QEvent::KeyPress && isKept(static_cast<const QKeyEvent&>(*event))) return true;
    return QObject::eventFilter(watched, event);
}

// A key must not act where nobody sees that it will. Shortcuts do not come by here, and where text is typed the cursor
// is to be seen.
bool SettingsWindow::isKept(const QKeyEvent& key) {
    const bool acts = std::ranges::find(actingKeys, key.key()) != actingKeys.end();
    if (!acts && std::ranges::find(movingKeys, key.key()) == movingKeys.end()) return false;
    const bool wasKnown = _view.rootObject() && _view.rootObject()->property(showsFocus).toBool();
    showFocus();
    const QQuickItem* const focused = _view.activeFocusItem();
    if (focused && focused->flags().testFlag(QQuickItem::ItemAcceptsInputMethod)) return false;
    // Held, a key moves on and on, but acts once.
    return !wasKnown || (acts && key.isAutoRepeat());
}

}  // namespace hosts::desktop
