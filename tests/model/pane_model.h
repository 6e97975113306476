// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "platform/foundation/value.h"
#include "tests/kit/page_tables.h"

namespace model {

using kit::PageTable;
using Row = kit::ExpectedRow;

/// What the settings file holds, and what a write does to it.
class SettingsModel {
public:
    /// Nothing for a file that does not read as a dictionary.
    std::optional<platform::Dictionary> content;

    std::optional<platform::Value> read(const std::string& key) const;
    bool truth(const std::string& key) const { return platform::boolValue(read(key)); }
    std::int64_t integer(const std::string& key) const { return platform::integerValue(read(key)); }
    void write(const std::string& key, const platform::Value& value, nlohmann::json& events);
};

enum class Device { tallPhone, shortPhone, tablet };

/// The pane's pages as their rules say: which rows are shown, greyed and checked, which footers they
/// carry, and what each step writes, posts and redraws, in order. It speaks the automation
/// interface's JSON, so that an answer can be compared as it is.
class PaneModel {
public:
    PaneModel(SettingsModel& settings, Device device);

    /// The events since the last call.
    nlohmann::json takeEvents();
    nlohmann::json page() const;

    /// The rows on the page, as {section, row}; group rows are not among them.
    struct Place {
        std::size_t section;
        std::size_t row;
        const Row* content;
    };
    std::vector<Place> places() const;

    bool isGreyed(const Place& place) const;
    void tap(const Place& place);
    void moveSwitch(const Place& place, bool on);
    /// False on the first page.
    bool back();
    void appear() { update(false); }
    void reload();

private:
    struct Page {
        const PageTable* table;
        std::vector<std::size_t> shown;       ///< positions in the table
        std::map<std::size_t, bool> enabled;  ///< as far as it has been set
        std::map<std::size_t, std::string> footer;
    };

    Page& top() { return _pages.back(); }
    const Page& top() const { return _pages.back(); }

    void open(const PageTable& table);
    void update(bool animated);
    void repairOptions(const kit::PageState& state);

    void tapChoice(const Page& page, std::size_t position, std::size_t section);
    bool isChecked(const Page& page, const Row& row) const;

    bool isShown(std::size_t position) const;
    void want(std::size_t position, bool enabled, bool animated);
    void wantFooter(std::size_t position, const std::string& text, bool animated);
    void insertBlock(const kit::ExpectedBlock& block, bool animated);
    void removeBlock(const kit::ExpectedBlock& block, bool animated);
    void noteReload(std::size_t position, bool animated);
    nlohmann::json rowJson(const Page& page, std::size_t position) const;

    SettingsModel& _settings;
    Device _device;
    std::vector<Page> _pages;
    nlohmann::json _events = nlohmann::json::array();
};

}  // namespace model
