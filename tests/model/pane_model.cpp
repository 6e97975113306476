// SPDX-License-Identifier: MIT
#include "tests/model/pane_model.h"

#include <algorithm>
#include <utility>

namespace model {
namespace {

using nlohmann::json;
using platform::Value;

const std::map<std::string, Value>& defaults() {
    static const std::map<std::string, Value> all = {
        {"MultiCenter", true},
        {"QuickSwitcher", true},
        {"HotCorners", true},
        {"ReachabilityMode", true},
        {"MinimalControlCenterEnabled", true},
        {"MinimalControlCenterCondition", 1},
        {"OpenToLastApp", false},
        {"QuickLauncherNotPlaying", 0},
        {"QuickLauncherIsPlaying", 0},
        {"QuickLauncherAutoDismissDelay", 3},
        {"SliderActionsBrightness", 2},
        {"SliderActionsVolume", 2},
        {"SliderActionsDisableHUD", false},
        {"AlbumArtworkAutoDisplay", 6},
        {"AlbumArtworkAutoDismissDelay", 1},
        {"UnlimitedQuickSwitcher", false},
        {"AccessHomeScreen", false},
        {"AccessAppSwitcher", false},
        {"InvertHotCorners", false},
        {"PeopleInToday", false},
        {"DisableHomeDoubleClick", false},
    };
    return all;
}

bool isGroup(const Row& row) {
    return row.kind == Row::Kind::group;
}

json labelJson(const Row& row) {
    return isGroup(row) ? json(nullptr) : json(row.label);
}

json textJson(const std::string& text) {
    return text.empty() ? json(nullptr) : json(text);
}

const PageTable* pageOf(const std::string& className) {
    for (const PageTable* table :
         {&optionsTable(), &quickLauncherTable(), &sliderActionsTable(), &albumArtworkTable()}) {
        if (table->className == className) return table;
    }
    return nullptr;
}

}  // namespace

std::optional<Value> SettingsModel::read(const std::string& key) const {
    if (const Value* stored = content ? content->find(key) : nullptr) return *stored;
    auto found = defaults().find(key);
    return found == defaults().end() ? std::nullopt : std::optional(found->second);
}

void SettingsModel::write(const std::string& key, const Value& value, json& events) {
    if (!content) content.emplace();
    content->set(key, value);
    events.push_back(
        {{"event", "write"}, {"path", "/var/mobile/Library/Preferences/com.fenwary.trivel3.plist"}, {"ok", true}});
    events.push_back({{"event", "notification"}, {"name", "com.fenwary.trivel3.preferencesChanged"}});
}

PaneModel::PaneModel(SettingsModel& settings, Device device) : _settings(settings), _device(device) {
    open(rootTable());
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
    if (&table == &optionsTable()) page.enabled[34] = true;
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
        if (const PageTable* table = pageOf(row.key)) open(*table);
    } else if (row.kind == Row::Kind::choice) {
        tapChoice(top(), position, place.section);
    }
}

void PaneModel::tapChoice(const Page& page, std::size_t position, std::size_t section) {
    const Row& row = page.table->rows[position];
    const bool flags = row.key == "MinimalControlCenterCondition" || row.key == "AlbumArtworkAutoDisplay";
    const std::int64_t now = _settings.integer(row.key);
    std::int64_t wanted = row.value;
    if (flags && row.value != 0) wanted = (now & row.value) != 0 ? now & ~std::int64_t{row.value} : now | row.value;
    if (wanted == now) return;
    _settings.write(row.key, Value(wanted), _events);
    std::size_t current = 0;
    for (std::size_t i = 0; i < page.shown.size(); ++i) {
        if (i > 0 && isGroup(page.table->rows[page.shown[i]])) ++current;
        if (current == section) noteReload(page.shown[i], true);
    }
    const bool dependents = row.key == "QuickLauncherNotPlaying" || row.key == "QuickLauncherIsPlaying" ||
                            row.key == "QuickLauncherAutoDismissDelay" || row.key == "AlbumArtworkAutoDisplay";
    if (dependents) update(true);
}

void PaneModel::moveSwitch(const Place& place, bool on) {
    _settings.write(place.content->key, Value(on), _events);
    if (top().table != &sliderActionsTable()) update(true);
}

void PaneModel::update(bool animated) {
    if (top().table == &rootTable()) updateRoot(animated);
    if (top().table == &optionsTable()) updateOptions(animated);
    if (top().table == &quickLauncherTable()) updateQuickLauncher(animated);
    if (top().table == &albumArtworkTable()) updateAlbumArtwork(animated);
}

void PaneModel::updateRoot(bool animated) {
    const bool mc = _settings.truth("MultiCenter");
    const std::string pull =
        "Pull up from the bottom left corner of the screen to access, then release your finger on the app you want to "
        "switch to.";
    wantFooter(2, mc ? pull : pull + " For the standard multitasking display, pull up further.", animated);
    wantFooter(4,
               mc ? "Return to the Home Screen by swiping up from the bottom right corner of the screen."
                  : "Return to the Home Screen or reveal the multitasking display by swiping up from the bottom right "
                    "or left corners of the screen.",
               animated);
}

void PaneModel::repairOptions(bool mc, bool qs, bool me, bool re) {
    if (qs && mc) _settings.write("AccessAppSwitcher", Value(false), _events);
    if (me && re) {
        const std::int64_t condition = _settings.integer("MinimalControlCenterCondition");
        _settings.write("MinimalControlCenterCondition", Value(condition & ~std::int64_t{6}), _events);
    }
    if (!mc) _settings.write("PeopleInToday", Value(false), _events);
}

void PaneModel::updateOptions(bool animated) {
    const bool tall = _device == Device::tallPhone;
    const bool mc = _settings.truth("MultiCenter");
    const bool qs = _settings.truth("QuickSwitcher");
    const bool hc = _settings.truth("HotCorners");
    const bool me = !tall || _settings.truth("MinimalControlCenterEnabled");
    const bool re = tall && _settings.truth("ReachabilityMode");
    const bool ol = _settings.truth("OpenToLastApp");
    repairOptions(mc, qs, me, re);

    const std::pair<std::size_t, bool> wanted[] = {
        {1, mc},
        {3, mc},
        {4, mc && me},
        {5, mc && me},
        {6, mc && me && !re},
        {7, mc && me && !re},
        {9, mc || qs || hc},
        {10, mc || qs || hc},
        {12, mc && !(me && re)},
        {14, mc},
        {16, mc},
        {18, mc},
        {20, qs},
        {22, qs},
        {24, qs && !mc},
        {26, hc},
        {28, mc || qs || hc},
        {30, mc},
    };
    for (const auto& [position, enabled] : wanted)
        want(position, enabled, animated);

    if (tall) {
        wantBlock(4, 4, 3, me, animated);
    } else {
        removeBlock(0, 2, animated);
        removeBlock(2, 6, animated);
    }
    if (_device == Device::tablet) {
        for (std::size_t start : {11u, 13u, 19u, 29u})
            removeBlock(start, 2, animated);
    }
    wantBlock(10, 1, 9, ol, animated);

    wantFooter(2,
               me && re ? "Slide up on playback area to dynamically switch between minimal display at will."
                        : "Hides AirDrop/AirPlay and Track-Seeker.",
               animated);
    wantFooter(25,
               qs ? "Access the Quick Switcher from the right corner, and the Home Screen from the left."
                  : "Access the App Switcher from the right corner, and the Home Screen from the left.",
               animated);
}

void PaneModel::updateQuickLauncher(bool animated) {
    const bool wanted =
        _settings.integer("QuickLauncherNotPlaying") == 2 || _settings.integer("QuickLauncherIsPlaying") == 2;
    wantBlock(8, 5, 7, wanted, animated);
}

void PaneModel::updateAlbumArtwork(bool animated) {
    wantBlock(4, 5, 3, _settings.integer("AlbumArtworkAutoDisplay") >= 1, animated);
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

void PaneModel::wantBlock(std::size_t start, std::size_t length, std::size_t after, bool wanted, bool animated) {
    if (!wanted) return removeBlock(start, length, animated);
    if (isShown(start)) return;
    auto anchor = std::ranges::find(top().shown, after);
    if (anchor == top().shown.end()) return;
    const auto position = anchor - top().shown.begin() + 1;
    json labels = json::array();
    for (std::size_t i = 0; i < length; ++i) {
        top().shown.insert(top().shown.begin() + position + static_cast<std::ptrdiff_t>(i), start + i);
        labels.push_back(labelJson(top().table->rows[start + i]));
    }
    _events.push_back({{"event", "insert"}, {"rows", labels}, {"position", position}, {"animated", animated}});
}

void PaneModel::removeBlock(std::size_t start, std::size_t length, bool animated) {
    auto first = std::ranges::find(top().shown, start);
    if (first == top().shown.end()) return;
    const auto position = first - top().shown.begin();
    json labels = json::array();
    for (std::size_t i = 0; i < length && first != top().shown.end() && *first == start + i; ++i) {
        labels.push_back(labelJson(top().table->rows[start + i]));
        first = top().shown.erase(first);
    }
    _events.push_back({{"event", "remove"}, {"rows", labels}, {"position", position}, {"animated", animated}});
}

bool PaneModel::isChecked(const Page& page, const Row& row) const {
    if (row.kind != Row::Kind::choice) return page.table == &sliderActionsTable();
    const std::int64_t now = _settings.integer(row.key);
    if (row.key == "MinimalControlCenterCondition") return row.value == 0 ? now == 0 : (now & row.value) != 0;
    if (row.key == "AlbumArtworkAutoDisplay") return (now & row.value) != 0;
    return now == row.value;
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
