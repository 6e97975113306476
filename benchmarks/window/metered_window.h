// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "hosts/desktop/program/desktop_session.h"
#include "hosts/session/services.h"

namespace benchmarks {

/// The pane in a window on a phone, drawn into memory. Nothing fades or slides in it.
class MeteredWindow {
public:
    explicit MeteredWindow(std::string phoneFolder);

    /// False when the window cannot be made.
    bool open(const QStringList& path);

    /// Does something to the window, and returns when its next frame has been drawn.
    void drawAfter(const std::function<void()>& something);

    hosts::desktop::TableModel& table() { return *_session->navigation().current()->table(); }
    QQuickView& view() { return _session->window().view(); }
    /// The item that scrolls.
    QQuickItem* list();

private:
    hosts::PhoneOptions _options;
    std::optional<hosts::OpenedPhone> _phone;
    hosts::QuietNotifyCenter _notifications;
    hosts::QuietApplication _application;
    hosts::NoHandOver _handOver;
    std::unique_ptr<hosts::desktop::DesktopSession> _session;
};

}  // namespace benchmarks
