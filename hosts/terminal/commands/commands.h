// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "hosts/session/opened_phone.h"
#include "hosts/terminal/render/screen_text.h"

/// The subcommands. Each gives the program's exit status, and says on standard error what failed.
namespace hosts::terminal {

struct ShowOptions {
    std::string page = {};  ///< titles from the root page, with "/" between; empty for the root page
    bool json = false;
    ColourUse colour = ColourUse::automatic;
};
int runShow(OpenedPhone& context, const ShowOptions& options);

/// The interactive screen, on the terminal that standard input and output are; it ends when the user
/// quits or a signal asks for it. Where there is no such terminal it prints the root page, and says on
/// standard error how to go on. Gives the program's exit status.
int runScreen(OpenedPhone& context, ColourUse colour);

struct GetOptions {
    std::vector<std::string> keys;
    bool json = false;
};
int runGet(OpenedPhone& context, const GetOptions& options);

struct SetOptions {
    std::vector<std::string> words;  ///< keys and values in turn
    std::string type;                ///< "boolean", "integer" or "string"; empty for the key's own kind
};
int runSet(OpenedPhone& context, const SetOptions& options);

struct UnsetOptions {
    std::vector<std::string> keys;
    bool all = false;
};
int runUnset(OpenedPhone& context, const UnsetOptions& options);

struct ListOptions {
    std::vector<std::string> keys;  ///< none for all
    bool json = false;
};
int runList(OpenedPhone& context, const ListOptions& options);

struct ExplainOptions {
    std::vector<std::string> keys;  ///< none for all
    bool json = false;
};
int runExplain(OpenedPhone& context, const ExplainOptions& options);

struct DiffOptions {
    std::vector<std::string> where;  ///< folders of phones or files, "-" for standard input; two at most
    bool json = false;
    bool exitCode = false;
};
int runDiff(const PhoneOptions& phone, const DiffOptions& options);

struct ExportOptions {
    std::string output = "-";  ///< "-" for standard output
};
int runExport(OpenedPhone& context, const ExportOptions& options);

struct ApplyOptions {
    std::string file;  ///< "-" for standard input
    std::vector<std::string> only;
    bool isDryRun = false;
    bool isExact = false;
};
int runApply(OpenedPhone& context, const ApplyOptions& options);

struct ResetOptions {
    std::vector<std::string> keys;
    bool all = false;
};
int runReset(OpenedPhone& context, const ResetOptions& options);

struct HistoryOptions {
    bool json = false;
    std::optional<std::uint64_t> bytesOf;  ///< the change whose file's former content is to be printed
    bool forget = false;
};
int runHistory(OpenedPhone& context, const HistoryOptions& options);

struct UndoOptions {
    std::vector<std::uint64_t> changes;  ///< none for the last turn
    bool force = false;                  ///< whether what has been changed since is overwritten
};
int runUndo(OpenedPhone& context, const UndoOptions& options);

struct PhoneCommandOptions {
    bool json = false;
    bool identifiers = false;  ///< whether what tells one device from all others is printed too
};
int runPhone(OpenedPhone& context, const PhoneCommandOptions& options);

struct ReportOptions {
    std::string output = "-";  ///< "-" for standard output
};
int runReport(OpenedPhone& context, const ReportOptions& options);

struct MonitorOptions {
    bool json = false;
    bool unannounced = false;  ///< whether to tell, too, what no notification came for
};
int runMonitor(OpenedPhone& context, const MonitorOptions& options);

struct DriveOptions {
    std::set<std::string> openableSchemes;
};
int runDrive(OpenedPhone& context, const DriveOptions& options);

struct LintOptions {
    std::vector<std::string> files;
};
int runPlistLint(const LintOptions& options);

struct ConvertOptions {
    std::string format;  ///< "xml1", "binary1" or "json"
    std::string file;
    std::string output = "-";  ///< "-" for standard output
};
int runPlistConvert(const ConvertOptions& options);

}  // namespace hosts::terminal
