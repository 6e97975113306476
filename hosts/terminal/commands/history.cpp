// SPDX-License-Identifier: MIT
#include <unistd.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "hosts/session/exit_status.h"
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/commands/history_text.h"
#include "hosts/terminal/render/printable.h"
#include "hosts/terminal/render/standard_output.h"
#include "hosts/terminal/render/value_json.h"
#include "hosts/terminal/render/value_text.h"
#include "platform/foundation/system_file.h"

namespace hosts::terminal {
namespace {

using platform::Problem;
using platform::Result;

// What was absent has no field: null is a value that a file may hold.
nlohmann::json entryJson(const HistoryEntry& entry, AnswerValues& values) {
    nlohmann::json object = {{"change", entry.change},
                             {"turn", entry.turn},
                             {"time", valueSummary(platform::Value(entry.time))},
                             {"file", entry.file},
                             {"key", entry.key},
                             {"entry", entry.entry ? nlohmann::json(*entry.entry) : nlohmann::json()},
                             {"undone", entry.isUndone}};
    if (entry.before) object["old"] = values.jsonOf(entry.before);
    if (entry.after) object["new"] = values.jsonOf(entry.after);
    return object;
}

std::string entriesJson(const std::vector<HistoryEntry>& entries) {
    AnswerValues values;
    nlohmann::json all = nlohmann::json::array();
    for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry)
        all.push_back(entryJson(*entry, values));
    return jsonLine(all) + "\n";
}

std::string entryLine(const HistoryEntry& entry) {
    std::string line = std::to_string(entry.change) + "  turn " + std::to_string(entry.turn) + "  " +
                       valueSummary(platform::Value(entry.time)) + "  " +
                       printable(entry.file.substr(entry.file.rfind('/') + 1)) + "  " + changeSummary(entry);
    if (entry.isUndone) line += "  (undone)";
    if (entry.undoes) line += "  (undoes " + std::to_string(*entry.undoes) + ")";
    if (entry.kept) line += "  (what the file held: " + printable(entry.kept->path) + ")";
    return line + "\n";
}

// What the file held that the change has written over.
Result<std::string> bytesBefore(OpenedPhone& context, const History::Reading& history, std::uint64_t change) {
    const auto entry = std::ranges::find(history.entries, change, &HistoryEntry::change);
    const std::string name = "change " + std::to_string(change);
    if (entry == history.entries.end()) return Problem{.reason = "there is no " + name + " in the history"};
    if (!entry->kept) return Problem{.reason = name + " has written over nothing that was kept"};
    if (entry->kept->isOnPhone) {
        std::string bytes;
        const auto read = context.phone->files().readFile(entry->kept->path, bytes);
        return read ? Result(std::move(bytes)) : read.error();
    }
    auto bytes = platform::readSystemFile(entry->kept->path);
    if (!bytes) return Problem{entry->kept->path, "cannot read", "it is kept no more"};
    return *std::move(bytes);
}

}  // namespace

std::string changeSummary(const HistoryEntry& entry) {
    return printable(entry.name()) + ": " + valueSummary(entry.before) + " -> " + valueSummary(entry.after);
}

int runHistory(OpenedPhone& context, const HistoryOptions& options) {
    History& kept = context.history->history;
    if (options.forget) {
        const auto forgotten = kept.forget();
        return forgotten ? done : fail(failed, forgotten.error());
    }
    const auto history = kept.read();
    if (!history) return fail(failed, history.error());
    if (history->damagedLines > 0) {
        context.outcomes->remark(
            std::to_string(history->damagedLines) +
            (history->damagedLines == 1 ? " line of the history is" : " lines of the history are") +
            " damaged and left out");
    }
    if (options.bytesOf) {
        const auto bytes = bytesBefore(context, *history, *options.bytesOf);
        if (!bytes) return fail(failed, bytes.error());
        print(::isatty(STDOUT_FILENO) == 1 ? printableLines(*bytes) : *bytes);
        return done;
    }
    if (options.json) {
        print(entriesJson(history->entries));
        return done;
    }
    for (auto entry = history->entries.rbegin(); entry != history->entries.rend(); ++entry)
        print(entryLine(*entry));
    return done;
}

}  // namespace hosts::terminal
