// SPDX-License-Identifier: MIT
#include "hosts/session/dependencies.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include "hosts/session/failure_table.h"
#include "hosts/session/memory_files.h"
#include "hosts/session/page_tour.h"

namespace hosts {
namespace {

using platform::Dictionary;
using SettingKind = platform::PreferenceAccess::Kind;
using Settings = std::span<const platform::PreferenceAccess::Setting>;

/// What the settings hold, in their order; 0 for one that is no number.
using State = std::vector<std::int64_t>;
using Clause = FailureTable::Clause;
/// The rows that are there, by their numbers, and whether each can be used.
using Rows = std::map<std::size_t, bool>;

constexpr const char* probe = "trivel3.probe";

// Nothing for a row that is not there.
std::optional<bool> lookOf(const Rows& rows, std::size_t row) {
    const auto seen = rows.find(row);
    return seen == rows.end() ? std::nullopt : std::optional(seen->second);
}

/// The pane's pages, looked at with any settings.
class Experiment {
public:
    Experiment(OpenedPhone& opened, Settings settings, std::string settingsFile)
        : _settings(settings),
          _settingsFile(std::move(settingsFile)),
          _tour(opened, _files, PageTour::Applications::lookedFor),
          _values(settings.size()) {
        _files.put("/Applications/Probe.app/Info.plist",
                   Dictionary{{"CFBundleIdentifier", probe}, {"CFBundleDisplayName", probe}});
        for (std::size_t i = 0; i < settings.size(); ++i)
            if (settings[i].kind == SettingKind::boolean) _values[i] = {0, 1};
    }

    Rows lookAt(const Dictionary& stored);

    /// Finds for each row the settings whose change alone makes it come, go, or be greyed or not.
    void findWhatMatters();
    /// Finds which rows belong to settings that are dictionaries.
    void findTicks();

    std::vector<SettingRow> settingRows();

private:
    const Rows& rowsIn(const State& state);
    State defaults() const;
    State extreme(bool isMost) const;
    Dictionary contentOf(const State& state) const;
    std::size_t numberOf(PaneRow row);
    std::size_t settingNamed(const std::string& key) const;
    bool isNews(const Rows& rows);
    template <class See>
    void seeNeighbours(State state, const See& see);
    std::vector<Clause> ownClauses(std::size_t row);
    std::set<Clause> clausesOf(std::size_t row);
    std::vector<std::size_t> linksTo(const std::vector<std::string>& page) const;

    Settings _settings;
    std::string _settingsFile;
    MemoryFiles _files;
    PageTour _tour;
    std::vector<std::set<std::int64_t>> _values;  ///< what each setting can hold, as far as rows have told
    std::vector<PaneRow> _rows;
    std::map<std::vector<std::string>, std::size_t> _numbers;
    std::map<State, Rows> _seen;
    std::map<std::size_t, std::set<std::size_t>> _matters;         ///< settings, by row
    std::set<std::pair<std::size_t, std::optional<bool>>> _looks;  ///< of each row those that have been seen
};

std::size_t Experiment::settingNamed(const std::string& key) const {
    const auto found = std::ranges::find(_settings, key, &platform::PreferenceAccess::Setting::key);
    return static_cast<std::size_t>(std::distance(_settings.begin(), found));
}

// Other rows than those of settings, links and applications tell nothing of settings, and are rows all the same.
std::size_t Experiment::numberOf(PaneRow row) {
    std::vector<std::string> name = row.page;
    name.push_back(row.label);
    name.push_back(row.key.value_or(""));
    name.push_back(row.value ? std::to_string(*row.value) : "");
    const auto [known, isNew] = _numbers.emplace(std::move(name), _rows.size());
    if (!isNew) return known->second;
    const std::size_t setting = row.key ? settingNamed(*row.key) : _settings.size();
    if (row.value && setting < _settings.size()) {
        _values[setting].insert(*row.value);
        if (row.isFlag) _values[setting].insert(0);
    }
    _rows.push_back(std::move(row));
    return known->second;
}

Rows Experiment::lookAt(const Dictionary& stored) {
    _files.put(_settingsFile, stored);
    Rows seen;
    _tour.seeEveryPage([&](const std::vector<std::string>& titles, platform::UIViewController& page) {
        for (PaneRow& row : rowsOfPage(titles, page)) {
            const bool isUsable = row.isEnabled;
            seen[numberOf(std::move(row))] = isUsable;
        }
    });
    return seen;
}

const Rows& Experiment::rowsIn(const State& state) {
    const auto known = _seen.find(state);
    return known != _seen.end() ? known->second : _seen.emplace(state, lookAt(contentOf(state))).first->second;
}

Dictionary Experiment::contentOf(const State& state) const {
    Dictionary content;
    for (std::size_t i = 0; i < state.size(); ++i) {
        if (_settings[i].kind == SettingKind::boolean) content.set(_settings[i].key, state[i] != 0);
        if (_settings[i].kind == SettingKind::integer) content.set(_settings[i].key, state[i]);
    }
    return content;
}

State Experiment::defaults() const {
    State state;
    for (const auto& setting : _settings)
        state.push_back(setting.defaultValue ? platform::integerValue(*setting.defaultValue) : 0);
    return state;
}

State Experiment::extreme(bool isMost) const {
    State state;
    for (const auto& values : _values)
        state.push_back(values.empty() ? 0 : isMost ? *values.rbegin() : *values.begin());
    return state;
}

template <class See>
void Experiment::seeNeighbours(State state, const See& see) {
    for (std::size_t i = 0; i < state.size(); ++i) {
        const std::int64_t own = state[i];
        const std::set<std::int64_t> values = _values[i];
        for (const std::int64_t value : values) {
            state[i] = value;
            if (value != own) see(i, state);
        }
        state[i] = own;
    }
}

// Whether a row is there, greyed or gone that never was before.
bool Experiment::isNews(const Rows& rows) {
    bool isNews = false;
    for (std::size_t row = 0; row < _rows.size(); ++row)
        isNews = _looks.emplace(row, lookOf(rows, row)).second || isNews;
    return isNews;
}

// Around a state for each look of each row, changes of single settings tell what it depends on, but for what takes two
// changes from all of these.
void Experiment::findWhatMatters() {
    rowsIn(defaults());
    rowsIn(extreme(true));
    // Rows that were not there at first have told further values.
    std::vector<State> states{defaults(), extreme(false), extreme(true)};
    for (const State& state : states)
        isNews(rowsIn(state));
    for (std::size_t i = 0; i < states.size(); ++i) {
        const State state = states[i];
        const Rows& rows = rowsIn(state);
        seeNeighbours(state, [&](std::size_t setting, const State& neighbour) {
            const Rows& rowsThere = rowsIn(neighbour);
            for (std::size_t row = 0; row < _rows.size(); ++row)
                if (lookOf(rows, row) != lookOf(rowsThere, row)) _matters[row].insert(setting);
            if (isNews(rowsThere)) states.push_back(neighbour);
        });
    }
}

void Experiment::findTicks() {
    for (const auto& setting : _settings) {
        if (setting.kind != SettingKind::dictionary) continue;
        const Dictionary ticks{{probe, true}};
        _files.put(_settingsFile, Dictionary{{setting.key, ticks}});
        _tour.seeEveryPage([&](const std::vector<std::string>& titles, platform::UIViewController& page) {
            for (PaneRow& row : rowsOfPage(titles, page))
                if (row.application == probe && row.isChecked) _rows[numberOf(std::move(row))].key = setting.key;
        });
    }
}

std::vector<Clause> Experiment::ownClauses(std::size_t row) {
    FailureTable::Domains domains;
    for (const std::size_t setting : _matters[row])
        domains.emplace_back(setting, std::vector(_values[setting].begin(), _values[setting].end()));
    FailureTable table(domains);
    if (!table.isReadable()) return {};
    table.fill([&](const FailureTable::Point& point) {
        State state = defaults();
        for (std::size_t i = 0; i < point.size(); ++i)
            state[domains[i].first] = domains[i].second[point[i]];
        return lookOf(rowsIn(state), row) != true;
    });
    return table.clauses();
}

std::vector<std::size_t> Experiment::linksTo(const std::vector<std::string>& page) const {
    std::vector<std::size_t> links;
    for (std::size_t row = 0; row < _rows.size(); ++row) {
        std::vector<std::string> leadsTo = _rows[row].page;
        leadsTo.push_back(_rows[row].label);
        const auto parting = std::ranges::mismatch(leadsTo, page);
        if (_rows[row].isLink && parting.in1 == leadsTo.end()) links.push_back(row);
    }
    return links;
}

// Those of the row itself and of every link on the way to it.
std::set<Clause> Experiment::clausesOf(std::size_t row) {
    std::set<Clause> all;
    std::vector<std::size_t> way = linksTo(_rows[row].page);
    way.push_back(row);
    for (const std::size_t each : way)
        for (Clause& clause : ownClauses(each))
            all.insert(std::move(clause));
    std::erase_if(all, [copy = all](const Clause& clause) {
        return std::ranges::any_of(
            copy, [&](const Clause& each) { return each != clause && std::ranges::includes(clause, each); });
    });
    return all;
}

std::vector<SettingRow> Experiment::settingRows() {
    std::vector<SettingRow> told;
    for (std::size_t row = 0; row < _rows.size(); ++row) {
        if (!_rows[row].key || settingNamed(*_rows[row].key) == _settings.size()) continue;
        SettingRow& each = told.emplace_back(SettingRow{_rows[row]});
        if (each.application) each.label.clear();
        for (const Clause& clause : clausesOf(row)) {
            auto& alternatives = each.dependsOn.emplace_back();
            for (const auto& [setting, value] : clause)
                alternatives.push_back({_settings[setting].key, value});
        }
    }
    return told;
}

}  // namespace

std::vector<SettingRow> rowsOfSettings(OpenedPhone& opened, Settings settings, const std::string& settingsFile,
                                       const Dictionary& stored) {
    Experiment experiment(opened, settings, settingsFile);
    experiment.lookAt(stored);
    experiment.findWhatMatters();
    experiment.findTicks();
    return experiment.settingRows();
}

}  // namespace hosts
