// SPDX-License-Identifier: MIT
#include "benchmarks/window/metered_window.h"

#include <QCoreApplication>
#include <QQuickItem>

namespace benchmarks {
namespace {

QQuickItem* enabledTable(QQuickItem* within) {
    if (within->objectName() == QLatin1String("table") && within->isEnabled()) return within;
    for (QQuickItem* child : within->childItems()) {
        if (QQuickItem* found = enabledTable(child)) return found;
    }
    return nullptr;
}

}  // namespace

MeteredWindow::MeteredWindow(std::string phoneFolder) {
    _options.phone = std::move(phoneFolder);
    if (auto phone = hosts::OpenedPhone::open(_options, "benchmark")) _phone.emplace(*std::move(phone));
}

bool MeteredWindow::open(const QStringList& path) {
    if (!_phone) return false;
    hosts::Phone& phone = *_phone->phone;
    _session = std::make_unique<hosts::desktop::DesktopSession>(hosts::desktop::DesktopSession::Outside{
        *_phone,
        {phone.files(), _notifications, _application, phone.device(), _phone->outcomes.get()},
        _handOver,
        hosts::usualDeviceShape()});
    const platform::CGSize size = hosts::usualDeviceShape().screen.bounds.size();
    if (!_session->open(QSizeF(size.width, size.height).toSize())) return false;
    _session->window().setReducedMotion(true);
    _session->navigation().follow(path);
    drawAfter([this] { view().show(); });
    return _session->navigation().path() == path && list();
}

void MeteredWindow::drawAfter(const std::function<void()>& something) {
    bool isDrawn = false;
    const auto connection =
        QObject::connect(&view(), &QQuickWindow::frameSwapped, &view(), [&isDrawn] { isDrawn = true; });
    something();
    view().update();
    while (!isDrawn)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QObject::disconnect(connection);
}

QQuickItem* MeteredWindow::list() {
    return enabledTable(view().rootObject());
}

}  // namespace benchmarks
