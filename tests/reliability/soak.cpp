// SPDX-License-Identifier: MIT
#include "soak.h"

#include <filesystem>
#include <iterator>
#include <stdexcept>

#include "tests/kit/phone.h"

namespace reliability_test {

using namespace kit;

namespace {

namespace fs = std::filesystem;

constexpr const char* exceptionsFile = "var/mobile/Library/Preferences/com.fenwary.trivel3.exceptions.plist";

Trivel3ctl& onSamplePhone(Trivel3ctl& ctl, const Phone& phone, const std::map<std::string, std::string>& environment) {
    fs::copy(TRIVEL3_SAMPLE_PHONE, phone.folder, fs::copy_options::recursive);
    ctl.usePhone(phone.folder);
    for (const auto& [name, value] : environment)
        ctl.set(name, value);
    return ctl;
}

json linksOf(const json& sections) {
    json links = json::array();
    for (std::size_t section = 0; section < sections.size(); ++section) {
        const json& rows = sections[section].at("rows");
        for (std::size_t row = 0; row < rows.size(); ++row) {
            if (rows[row].at("kind") == "link" && rows[row].at("enabled") == true)
                links.push_back({{"section", section}, {"row", row}});
        }
    }
    return links;
}

}  // namespace

Soak::Soak(unsigned long seed, const std::map<std::string, std::string>& environment)
    : _random(seed),
      _program(onSamplePhone(_ctl, _phone, environment), {"drive", "--can-open", "cydia,twitter,https"}) {
    const json show = {{"do", "show"}};
    _program.send(show.dump() + "\n");
    takeAnswer(show, _program.readLine().value_or(""));
}

void Soak::run(unsigned long steps) {
    for (unsigned long i = 0; i < steps; ++i)
        step();
}

Soak::Footprint Soak::footprint() const {
    return {_program.memory(), _program.threads(), _program.openFiles()};
}

void Soak::step() {
    if (oneIn(30)) changeFilesFromOutside();
    const json command = chooseCommand();
    _program.send((command.is_string() ? command.get<std::string>() : command.dump()) + "\n");
    const auto line = _program.readLine();
    if (!line) throw std::runtime_error{"no answer to " + command.dump() + ": " + _program.finish().errors};
    takeAnswer(command, *line);
}

json Soak::chooseCommand() {
    // A finger finishes what lies over the page sooner or later.
    if (_presented > 2 || (_presented > 0 && oneIn(3))) return {{"do", "composer"}, {"result", randomComposerResult()}};
    switch (pick(32)) {
        case 0:
        case 1:
        case 2:
            return {{"do", "back"}};
        case 3:
        case 4:
            return {{"do", "appear"}};
        case 5:
            return {{"do", "reload"}};
        case 6:
            return {{"do", "heart"}};
        case 7:
            return {{"do", "show"}};
        case 8:
            return {{"do", "view"}};
        case 9:
            return {{"do", "get"}, {"key", oneIn(2) ? "HotCorners" : "CloseAllAppsExceptions"}};
        case 10:
            return oneIn(2) ? json("{\"do\":") : json{{"do", "tap"}, {"row", "No such row"}};
        case 11:
        case 12:
        case 13:
        case 14:
        case 15:
        case 16:
        case 17:
        case 18:
            return {{"do", "switch"}, {"row", randomRow()}, {"on", oneIn(2)}};
        default:
            return {{"do", "tap"}, {"row", randomRow()}};
    }
}

// Rows that lead on are few, and would seldom be met by chance alone.
json Soak::randomRow() {
    const json& sections = _page.at("sections");
    const json links = linksOf(sections);
    if (!links.empty() && oneIn(3)) return links[pick(links.size())];
    if (sections.empty()) return {{"section", 0}, {"row", 0}};
    const std::size_t section = pick(sections.size());
    const std::size_t rows = sections[section].at("rows").size();
    return {{"section", section}, {"row", pick(rows + 1)}};
}

json Soak::randomComposerResult() {
    const char* results[] = {"sent", "saved", "cancelled", "failed"};
    return results[pick(std::size(results))];
}

std::string Soak::randomSettings() {
    const char* keys[] = {"AccessAppSwitcher",
                          "AlbumArtworkAutoDisplay",
                          "HotCorners",
                          "MinimalControlCenterCondition",
                          "MultiCenter",
                          "OpenToLastApp",
                          "QuickLauncherIsPlaying",
                          "QuickSwitcher",
                          "ReachabilityMode",
                          "SliderActionsVolume",
                          "UnknownKey"};
    const char* values[] = {
        "<true/>",  "<false/>",        "<integer>1</integer>", "<integer>6</integer>", "<string>YES</string>",
        "<array/>", "<real>2.5</real>"};
    std::vector<std::pair<std::string, std::string>> entries;
    for (const char* key : keys) {
        if (oneIn(2)) entries.emplace_back(key, values[pick(std::size(values))]);
    }
    return settingsOf(entries);
}

void Soak::changeFilesFromOutside() {
    switch (pick(6)) {
        case 0:
            fs::remove(_phone.settingsFile());
            break;
        case 1:
            writeText(_phone.settingsFile(), "<plist><dict><key>MultiCenter</key>");
            break;
        case 2:
            writeText(_phone / exceptionsFile, settingsOf({{"com.example.alpha", oneIn(2) ? "<true/>" : "<false/>"}}));
            break;
        case 3:
            toggleApplication();
            break;
        default:
            writeText(_phone.settingsFile(), randomSettings());
    }
}

void Soak::toggleApplication() {
    const fs::path installed = _phone / "var/mobile/Containers/Bundle/Application/3F2504E0-4F89-41D3-9A0C-0305E82C3301";
    if (fs::exists(installed)) {
        fs::remove_all(installed);
    } else {
        addApplication(_phone, "Come and Go");
    }
}

void Soak::takeAnswer(const json& command, const std::string& line) {
    const json answer = json::parse(line, nullptr, false);
    if (!answer.is_object() || !answer.contains("ok")) {
        throw std::runtime_error{"the answer to " + command.dump() + " is " + line};
    }
    if (answer.contains("page")) _page = answer["page"];
    for (const json& event : answer.value("events", json::array()))
        takeEvent(event);
}

void Soak::takeEvent(const json& event) {
    const std::string kind = event.at("event");
    if (kind == "write" && event.at("ok") != true) throw std::runtime_error{"a write failed: " + event.dump()};
    if (kind == "dismiss" && _presented > 0) --_presented;
    if (kind != "present") return;
    ++_presented;
    // The copies are there for whoever drives the program, and are theirs to remove.
    for (const json& attachment : event.value("attachments", json::array())) {
        if (attachment.at("path").is_string()) fs::remove_all(fs::path{attachment["path"]}.parent_path());
    }
}

}  // namespace reliability_test
