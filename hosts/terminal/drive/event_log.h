// SPDX-License-Identifier: MIT
#pragma once

#include <nlohmann/json.hpp>
#include <utility>

namespace hosts::terminal {

/// What has happened since the last answer, in order.
class EventLog {
public:
    void add(nlohmann::json event) { _events.push_back(std::move(event)); }
    nlohmann::json take() { return std::exchange(_events, nlohmann::json::array()); }

private:
    nlohmann::json _events = nlohmann::json::array();
};

}  // namespace hosts::terminal
