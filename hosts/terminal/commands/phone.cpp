// SPDX-License-Identifier: MIT
#include <array>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "hosts/phones/device_information.h"
#include "hosts/phones/history_entry.h"
#include "hosts/session/exit_status.h"
#include "hosts/session/installed_package.h"
#include "hosts/session/support_report.h"
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/commands/settings_command.h"
#include "hosts/terminal/render/printable.h"
#include "hosts/terminal/render/standard_output.h"
#include "hosts/terminal/render/value_json.h"
#include "hosts/terminal/render/value_text.h"
#include "platform/foundation/property_list.h"

namespace hosts::terminal {
namespace {

using platform::Value;

constexpr std::string_view identifierKey = "UniqueDeviceID";

/// A file of the pane's that the phone has.
struct PhoneFile {
    std::string path;
    std::uint64_t bytes = 0;
    platform::Date modified;
};

/// An entry of a support report; nothing where the report says that there is none to be had.
struct ReportEntry {
    std::string name;
    std::optional<Value> told;
};

/// What is known of a phone.
struct PhoneFacts {
    std::string kind;
    std::string address;
    std::string name;
    std::string device;
    std::optional<std::string> model;
    std::optional<std::string> system;
    std::optional<std::string> addOn;
    PhonePromises promises;
    std::optional<double> roundTrip;
    std::vector<PhoneFile> files;
    std::vector<ReportEntry> report;
};

std::string kindOf(const OpenedPhone& opened) {
    if (opened.isSample) return "sample";
    switch (opened.phone->identity().kind) {
        case PhoneKind::folder:
            return "folder";
        case PhoneKind::mount:
            return "mount";
        case PhoneKind::ssh:
            return "ssh";
        case PhoneKind::report:
            break;
    }
    return "report";
}

std::optional<std::string> textAnswer(OpenedPhone& opened, std::string_view key) {
    const auto answer = opened.phone->device().copyAnswer(key);
    return answer && answer->string() ? std::optional(*answer->string()) : std::nullopt;
}

std::optional<std::string> packageDatabaseOf(OpenedPhone& opened) {
    std::string text;
    if (!opened.phone->files().readFile(packageDatabase, text)) return std::nullopt;
    return text;
}

platform::Result<std::vector<PhoneFile>> filesOf(OpenedPhone& opened, const SettingsCommand& command) {
    constexpr double nanoseconds = 1e9;
    std::vector<PhoneFile> files;
    if (opened.isReport) return files;
    for (const auto& file : command.settings().observedFiles()) {
        const auto stamp = opened.phone->files().look(file.path);
        if (!stamp && stamp.error().isPassing) return stamp.error();
        if (stamp)
            files.push_back({file.path, stamp->size, dateOf(static_cast<double>(stamp->modified) / nanoseconds)});
    }
    return files;
}

// What a report tells lies on the phone that it makes up. Packages are told by their size alone, and settings by their
// number: both are a person's own.
std::vector<ReportEntry> entriesOf(OpenedPhone& report, SettingsCommand& command, bool tellsIdentifiers) {
    std::vector<ReportEntry> entries;
    std::string bytes;
    if (!report.phone->files().readFile(DeviceInformation::phoneFile, bytes)) bytes.clear();
    const auto reading = platform::readPropertyList(bytes);
    const platform::Dictionary* const answers = reading ? reading.value->dictionary() : nullptr;
    for (const std::string_view key : deviceKeysOfReport()) {
        const Value* const answer = answers ? answers->find(key) : nullptr;
        const bool isMasked = key == identifierKey && !tellsIdentifiers;
        const auto told = !answer ? std::nullopt : std::optional(isMasked ? Value("(masked)") : *answer);
        entries.push_back({std::string(key), told});
    }
    const auto packages = packageDatabaseOf(report);
    entries.push_back({"Packages", packages ? std::optional(Value(std::uint64_t{packages->size()})) : std::nullopt});
    const auto settings = command.dictionaries().read(command.settings().observedFiles().front().path);
    entries.push_back({"Preferences", settings ? std::optional(Value(std::uint64_t{settings->size()})) : std::nullopt});
    return entries;
}

platform::Result<PhoneFacts> factsOf(OpenedPhone& opened, SettingsCommand& command, bool tellsIdentifiers) {
    PhoneFacts facts;
    facts.kind = kindOf(opened);
    facts.address = opened.phone->identity().place;
    facts.name = nameOf(opened);
    facts.device = opened.shape.name;
    facts.model = textAnswer(opened, "ProductType");
    facts.system = textAnswer(opened, "ProductVersion");
    const auto packages = packageDatabaseOf(opened);
    facts.addOn = packages ? installedVersion(*packages, addOnPackage) : std::nullopt;
    facts.promises = opened.phone->promises();
    facts.roundTrip = opened.phone->roundTrip();
    auto files = filesOf(opened, command);
    if (!files) return std::move(files).error();
    facts.files = *std::move(files);
    if (opened.isReport) facts.report = entriesOf(opened, command, tellsIdentifiers);
    return facts;
}

nlohmann::json promisesJson(const PhonePromises& promises) {
    return {{"keepsChanges", promises.keepsChanges},
            {"replacesInOneStep", orNull(promises.replacesInOneStep)},
            {"outlastsPowerLoss", orNull(promises.outlastsPowerLoss)},
            {"keepsOwners", orNull(promises.keepsOwners)},
            {"tellsChanges", orNull(promises.tellsChanges)},
            {"confinesLookUps", orNull(promises.confinesLookUps)}};
}

nlohmann::json factsJson(const PhoneFacts& facts) {
    nlohmann::json files = nlohmann::json::array();
    for (const PhoneFile& file : facts.files) {
        files.push_back({{"path", file.path}, {"bytes", file.bytes}, {"modified", valueSummary(Value(file.modified))}});
    }
    nlohmann::json json = {{"kind", facts.kind},
                           {"address", facts.address},
                           {"name", facts.name},
                           {"device", facts.device},
                           {"model", orNull(facts.model)},
                           {"system", orNull(facts.system)},
                           {"addon", orNull(facts.addOn)},
                           {"promises", promisesJson(facts.promises)},
                           {"roundTripMs", orNull(facts.roundTrip)},
                           {"files", std::move(files)}};
    AnswerValues values;
    for (const ReportEntry& entry : facts.report)
        json["report"][entry.name] = values.jsonOf(entry.told);
    return json;
}

/// Labels with what is known under them, a line each.
class FactsText {
public:
    explicit FactsText(const PhoneFacts& facts) {
        add("Kind", facts.kind);
        add("Address", facts.address);
        add("Name", facts.name);
        add("Device", facts.device);
        add("Model", facts.model.value_or(unknown));
        add("System", facts.system.value_or(unknown));
        add("Add-on", facts.addOn.value_or(unknown));
        for (const PhoneFile& file : facts.files) {
            add("File", file.path + ", " + std::to_string(file.bytes) + (file.bytes == 1 ? " byte, " : " bytes, ") +
                            valueSummary(Value(file.modified)));
        }
        if (facts.roundTrip) add("Round trip", milliseconds(*facts.roundTrip));
        addPromises(facts.promises);
        if (!facts.report.empty()) _text += "Report:\n";
        for (const ReportEntry& entry : facts.report)
            add("  " + entry.name, entry.told ? reportText(entry) : "null");
    }

    const std::string& text() const { return _text; }

private:
    static constexpr const char* unknown = "(not told)";

    void add(const std::string& label, const std::string& what) { _text += label + ": " + printable(what) + "\n"; }

    void addPromise(const char* label, std::optional<bool> promise) {
        add(label, !promise ? "not known before a change" : *promise ? "yes" : "no");
    }

    void addPromises(const PhonePromises& promises) {
        if (!promises.keepsChanges) {
            add("Changes", "tries, which are gone when the program ends");
            return;
        }
        addPromise("Replaces a file in one step", promises.replacesInOneStep);
        addPromise("A change outlasts a loss of power", promises.outlastsPowerLoss);
        addPromise("Keeps the owners of files", promises.keepsOwners);
        addPromise("Tells of changes", promises.tellsChanges);
        addPromise("Confines look-ups", promises.confinesLookUps);
    }

    static std::string milliseconds(double time) {
        std::array<char, 32> text;
        std::snprintf(text.data(), text.size(), "%.1f ms", time);
        return text.data();
    }

    static std::string reportText(const ReportEntry& entry) {
        const std::string text = valueSummary(entry.told);
        if (entry.name == "Packages") return text + " bytes";
        return entry.name == "Preferences" ? text + (text == "1" ? " setting" : " settings") : text;
    }

    std::string _text;
};

}  // namespace

int runPhone(OpenedPhone& context, const PhoneCommandOptions& options) {
    auto command = SettingsCommand::open(context);
    if (!command) return fail(failed, command.error());
    const auto facts = factsOf(context, *command, options.identifiers);
    if (!facts) return fail(failed, facts.error());
    if (const auto read = command->outcome(); !read) return fail(failed, read.error());
    print(options.json ? jsonLine(factsJson(*facts)) + "\n" : FactsText(*facts).text());
    return done;
}

}  // namespace hosts::terminal
