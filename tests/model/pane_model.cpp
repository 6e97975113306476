// SPDX-License-Identifier: MIT
#include "tests/model/pane_model.h"

#include <algorithm>
#include <utility>

namespace model {
namespace {

using nlohmann::json;
using platform::Value;

bool isGroup(const Row& row) {
    return row.kind == Row::Kind::group;
}

json labelJson(const Row& row) {
    return isGroup(row) ? json(nullptr) : json(row.label);
}

json textJson(const std::string& text) {
    return text.empty() ? json(nullptr) : json(text);
}

}  // namespace

std::optional<Value> SettingsModel::read(const std::string& key) const {
    if (const Value* stored = content ? content->find(key) : nullptr) return *stored;
    return kit::expectedDefault(key);
}

void SettingsModel::write(const std::string& key, const Value& value, json& events) {
    if (!content) content.emplace();
    content->set(key, value);
    events.push_back(
        {{"event", "write"}, {"path", "/var/mobile/Library/Preferences/com.fenwary.trivel3.plist"}, {"ok", true}});
    events.push_back({{"event", "notification"}, {"name", "com.fenwary.trivel3.preferencesChanged"}});
}

PaneModel::PaneModel(SettingsModel& settings, Device device) : _settings(settings), _device(device) {
    open(kit::rootTable());
}

json PaneModel::takeEvents() {
    return std::exchange(_events, json::array());
}

void PaneModel::open(const PageTable& table) {
    Page page{&table, {}, {}, {}};
    for (std::size_t position = 0; position < table.rows.size(); ++position) {
        page.shown.push_back(position);
        if (!table.rows[position].footer.empty()) page.footer[position] = table.rows[position].footer;
    }
    if (!_pages.empty()) _events.push_back({{"event", "push"}, {"class", table.className}});
    // The sibling product is not installed, so its row is made usable from the start.
    if (&table == &kit::optionsTable()) page.enabled[table.rows.size() - 1] = true;
    _pages.push_back(std::move(page));
    update(false);
}

bool PaneModel::back() {
    if (_pages.size() < 2) return false;
    _pages.pop_back();
    _events.push_back({{"event", "pop"}, {"class", top().table->className}});
    update(false);
    return true;
}

void PaneModel::reload() {
    top().shown.clear();
    for (std::size_t position = 0; position < top().table->rows.size(); ++position)
        top().shown.push_back(position);
    update(false);
}

std::vector<PaneModel::Place> PaneModel::places() const {
    std::vector<Place> all;
    std::size_t section = 0;
    std::size_t row = 0;
    for (std::size_t i = 0; i < top().shown.size(); ++i) {
        const Row& content = top().table->rows[top().shown[i]];
        if (isGroup(content)) {
            section += i == 0 ? 0 : 1;
            row = 0;
        } else {
            all.push_back({section, row++, &content});
        }
    }
    return all;
}

bool PaneModel::isGreyed(const Place& place) const {
    const auto position = static_cast<std::size_t>(place.content - top().table->rows.data());
    auto found = top().enabled.find(position);
    return found != top().enabled.end() && !found->second;
}

void PaneModel::tap(const Place& place) {
    if (isGreyed(place)) return;
    const auto position = static_cast<std::size_t>(place.content - top().table->rows.data());
    const Row& row = *place.content;
    if (row.label == "Ostrel") {
        _events.push_back({{"event", "open-url"}, {"url", "cydia://package/com.fenwary.ostrel"}});
    } else if (row.kind == Row::Kind::link) {
        if (const PageTable* table = kit::pageTable(row.key)) open(*table);
    } else if (row.kind == Row::Kind::choice) {
        tapChoice(top(), position, place.section);
    }
}

void PaneModel::tapChoice(const Page& page, std::size_t position, std::size_t section) {
    const Row& row = page.table->rows[position];
    const std::int64_t now = _settings.integer(row.key);
    const std::int64_t wanted = kit::expectedAfterTap(row, now);
    if (wanted == now) return;
    _settings.write(row.key, Value(wanted), _events);
    std::size_t current = 0;
    for (std::size_t i = 0; i < page.shown.size(); ++i) {
        if (i > 0 && isGroup(page.table->rows[page.shown[i]])) ++current;
        if (current == section) noteReload(page.shown[i], true);
    }
    if (row.updatesPage) update(true);
}

void PaneModel::moveSwitch(const Place& place, bool on) {
    _settings.write(place.content->key, Value(on), _events);
    if (top().table != &kit::sliderActionsTable()) update(true);
}

void PaneModel::update(bool animated) {
    const PageTable& table = *top().table;
    const kit::PageState state =
        kit::pageState(_device != Device::tablet, _device == Device::tallPhone,
                       [this](std::string_view key) { return _settings.read(std::string(key)); });
    if (&table == &kit::optionsTable()) repairOptions(state);
    for (std::size_t position = 0; position < table.rows.size(); ++position) {
        if (table.rows[position].usable) want(position, table.rows[position].usable(state), animated);
    }
    for (const kit::ExpectedBlock& block : table.blocks) {
        const std::optional<bool> wanted = block.wanted(state);
        if (!wanted || *wanted == isShown(block.start)) continue;
        *wanted ? insertBlock(block, animated) : removeBlock(block, animated);
    }
    for (std::size_t position = 0; position < table.rows.size(); ++position) {
        if (table.rows[position].footerNow) wantFooter(position, table.rows[position].footerNow(state), animated);
    }
}

void PaneModel::repairOptions(const kit::PageState& state) {
    if (state.quickSwitcher && state.multiCenter) _settings.write("AccessAppSwitcher", Value(false), _events);
    if (state.minimal && state.reachable) {
        const std::int64_t condition = _settings.integer("MinimalControlCenterCondition");
        _settings.write("MinimalControlCenterCondition", Value(condition & ~std::int64_t{6}), _events);
    }
    if (!state.multiCenter) _settings.write("PeopleInToday", Value(false), _events);
}

bool PaneModel::isShown(std::size_t position) const {
    return std::ranges::find(top().shown, position) != top().shown.end();
}

void PaneModel::noteReload(std::size_t position, bool animated) {
    auto found = std::ranges::find(top().shown, position);
    if (found == top().shown.end()) return;
    _events.push_back({{"event", "reload"},
                       {"row", labelJson(top().table->rows[position])},
                       {"position", found - top().shown.begin()},
                       {"animated", animated}});
}

void PaneModel::want(std::size_t position, bool enabled, bool animated) {
    auto found = top().enabled.find(position);
    if (found != top().enabled.end() && found->second == enabled) return;
    top().enabled[position] = enabled;
    noteReload(position, animated);
}

void PaneModel::wantFooter(std::size_t position, const std::string& text, bool animated) {
    if (top().footer[position] == text) return;
    top().footer[position] = text;
    noteReload(position, animated);
}

void PaneModel::insertBlock(const kit::ExpectedBlock& block, bool animated) {
    auto anchor = std::ranges::find(top().shown, block.start - 1);
    if (anchor == top().shown.end()) return;
    const auto position = anchor - top().shown.begin() + 1;
    json labels = json::array();
    for (std::size_t i = 0; i < block.length; ++i) {
        top().shown.insert(top().shown.begin() + position + static_cast<std::ptrdiff_t>(i), block.start + i);
        labels.push_back(labelJson(top().table->rows[block.start + i]));
    }
    _events.push_back({{"event", "insert"}, {"rows", labels}, {"position", position}, {"animated", animated}});
}

void PaneModel::removeBlock(const kit::ExpectedBlock& block, bool animated) {
    auto first = std::ranges::find(top().shown, block.start);
    const auto position = first - top().shown.begin();
    json labels = json::array();
    for (std::size_t i = 0; i < block.length && first != top().shown.end() && *first == block.start + i; ++i) {
        labels.push_back(labelJson(top().table->rows[block.start + i]));
        first = top().shown.erase(first);
    }
    _events.push_back({{"event", "remove"}, {"rows", labels}, {"position", position}, {"animated", animated}});
}

bool PaneModel::isChecked(const Page& page, const Row& row) const {
    if (row.kind != Row::Kind::choice) return page.table == &kit::sliderActionsTable();
    return kit::isExpectedChecked(row, _settings.integer(row.key));
}

json PaneModel::rowJson(const Page& page, std::size_t position) const {
    const Row& row = page.table->rows[position];
    const bool choice = row.kind == Row::Kind::choice;
    const bool toggle = row.kind == Row::Kind::switchRow;
    auto enabled = page.enabled.find(position);
    return {{"label", row.label},
            {"kind", toggle   ? "switch"
                     : choice ? "item"
                              : "link"},
            {"identifier", toggle ? json(row.key) : json(nullptr)},
            {"key", choice ? json(row.key) : json(nullptr)},
            {"value", choice ? json(row.value) : json(nullptr)},
            {"enabled", enabled == page.enabled.end() || enabled->second},
            {"checked", isChecked(page, row)},
            {"on", toggle ? json(_settings.truth(row.key)) : json(nullptr)}};
}

json PaneModel::page() const {
    json sections = json::array();
    for (std::size_t position : top().shown) {
        const Row& row = top().table->rows[position];
        if (isGroup(row)) {
            auto footer = top().footer.find(position);
            sections.push_back({{"header", textJson(row.label)},
                                {"footer", footer == top().footer.end() ? json(nullptr) : textJson(footer->second)},
                                {"rows", json::array()}});
        } else {
            sections.back()["rows"].push_back(rowJson(top(), position));
        }
    }
    return {{"class", top().table->className}, {"title", top().table->title}, {"sections", sections}};
}

}  // namespace model
