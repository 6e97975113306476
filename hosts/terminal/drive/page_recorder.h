// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/terminal/drive/event_log.h"
#include "platform/list/table_host.h"
#include "platform/ui/navigation_controller.h"

namespace hosts::terminal {

/// The screen of a driven session: it draws nothing, and notes what a screen would be told.
class PageRecorder final : public platform::NavigationHost, public platform::TableHost {
public:
    explicit PageRecorder(EventLog& events) : _events(events) {}

    void didPush(platform::UIViewController& page, bool animated) override;
    void didPop(platform::UIViewController& page, platform::UIViewController& gone, bool animated) override;
    void didPresent(const std::shared_ptr<platform::UIViewController>& presented, bool animated) override;
    void didDismiss(bool animated) override;

    void reloadTable(platform::PSListController& page) override;
    void reloadRow(platform::PSListController& page, std::size_t position, bool animated) override;
    void insertRows(platform::PSListController& page, std::size_t position, Rows rows, bool animated) override;
    void removeRows(platform::PSListController& page, std::size_t position, Rows rows, bool animated) override;

private:
    void noteRows(const char* event, std::size_t position, Rows rows, bool animated);

    EventLog& _events;
    /// The first page is where a session starts; nothing pushed it.
    bool _rootIsShown = false;
};

}  // namespace hosts::terminal
