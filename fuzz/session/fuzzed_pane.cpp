// SPDX-License-Identifier: MIT
#include "fuzz/session/fuzzed_pane.h"

#include <string>

#include "fuzz/require.h"
#include "fuzz/session/page_rows.h"
#include "hosts/app_list/application_list.h"
#include "hosts/session/device_shape.h"
#include "platform/foundation/property_list.h"
#include "store/exceptions_file.h"
#include "store/preference_store.h"

// The pane's own entry, linked into the program.
extern "C" platform::RegisterClasses trivel3RegisterClasses;

namespace fuzz {
namespace {

using namespace platform;
using trivel3::PreferenceStore;

const hosts::DeviceShape& shapeOf(const SessionInput& input) {
    const auto shapes = hosts::deviceShapes();
    return shapes[input.device % shapes.size()];
}

void install(CheckedPhone& phone, const std::string& folder, const char* identifier, const char* name) {
    const Dictionary info{{"CFBundleIdentifier", identifier}, {"CFBundleDisplayName", name}};
    phone.put(folder + "/Info.plist", writeXmlPropertyList(info).bytes.value());
}

void installApplications(CheckedPhone& phone) {
    const std::string user = "/var/mobile/Containers/Bundle/Application/";
    install(phone, "/Applications/Clock.app", "com.apple.clock", "Clock");
    install(phone, "/Applications/Maps.app", "com.apple.maps", "Maps");
    install(phone, user + "1/Tides.app", "com.example.tides", "Tides");
    install(phone, user + "2/Zither.app", "com.example.zither", "Zither");
}

std::shared_ptr<Object> makeApplicationList(Platform& platform) {
    return std::make_shared<hosts::InstalledApplicationList>(platform);
}

}  // namespace

FuzzedPane::FuzzedPane(const SessionInput& input)
    : _services{_phone,
                _notifications,
                _classes,
                _system,
                _application,
                _deviceQuery,
                _mail,
                _posts,
                shapeOf(input).device,
                shapeOf(input).screen},
      _screen(_services, _log) {
    trivel3RegisterClasses(_classes);
    _classes.add({ALApplicationList::className, makeApplicationList, {}});
    installApplications(_phone);
    _phone.put(PreferenceStore::settingsFile, input.settings);
    _phone.put(trivel3::exceptions::file, input.exceptions);
}

void FuzzedPane::useEverything(std::size_t firstPage) {
    const auto& pages = pageNames();
    for (std::size_t index = 0; index < pages.size(); ++index)
        use(pages[(firstPage + index) % pages.size()]);
}

void FuzzedPane::use(std::string_view className) {
    _screen.open(className);
    checkRows();
    checkCells();
    // Rows come and go on the way.
    for (std::size_t index = 0; index < paths().size(); ++index) {
        useRow(paths()[index]);
        checkRows();
    }
    checkCells();
}

void FuzzedPane::useRow(NSIndexPath path) {
    const auto page = _screen.top();
    const auto cell = _screen.cell(path);
    if (cell->isSwitch()) return moveSwitch(*cell);
    _screen.tap(path);
    returnTo(*page);
}

void FuzzedPane::moveSwitch(PSTableCell& cell) {
    const std::string key = cell.specifier()->identifier().value();
    const bool wanted = !cell.isOn();
    const std::size_t writes = _phone.writes();
    if (!cell.userMovedSwitch(wanted)) return require(!cell.isCellEnabled(), "a switch that is not greyed moves");
    auto settings = _phone.dictionary(PreferenceStore::settingsFile).value_or(Dictionary());
    if (_phone.writes() > writes) {
        const Value* stored = settings.find(key);
        require(stored && *stored == Value(wanted), "a switch that has moved is stored");
    } else {
        settings.set(key, wanted);
        require(!writeXmlPropertyList(settings), "settings that can be written are written");
    }
}

void FuzzedPane::returnTo(const UIViewController& page) {
    while (_screen.top().get() != &page)
        require(_screen.back(), "a page that a row has opened can be left");
}

void FuzzedPane::checkRows() const {
    require(mayShow(_screen.page().className(), _screen.labels()), "a page shows its rows");
}

void FuzzedPane::checkCells() const {
    for (const NSIndexPath path : paths())
        require(_screen.cell(path)->specifier() == _screen.page().specifierAtIndexPath(path), "a cell is its row's");
}

std::vector<NSIndexPath> FuzzedPane::paths() const {
    PSListController& page = _screen.page();
    std::vector<NSIndexPath> paths;
    for (std::size_t section = 0; section < page.numberOfSectionsInTableView(page.table()); ++section) {
        for (std::size_t row = 0; row < page.tableView_numberOfRowsInSection(page.table(), section); ++row)
            paths.push_back({section, row});
    }
    return paths;
}

}  // namespace fuzz
