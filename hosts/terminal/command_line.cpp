// SPDX-License-Identifier: MIT
#include "hosts/terminal/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "hosts/session/completion.h"
#include "hosts/session/exit_status.h"
#include "hosts/session/nearest_spelling.h"
#include "hosts/terminal/commands/argument_words.h"
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/help_format.h"
#include "hosts/terminal/render/printable.h"
#include "hosts/terminal/render/standard_output.h"

namespace hosts::terminal {
namespace {

constexpr const char* noReport =
    "--phone: this works on a phone's folder alone; a support report is for show, get, list, explain, phone, diff, "
    "export, drive and the screen";
constexpr const char* inputIsTaken = "--phone: standard input is taken; give the report as a file";
constexpr const char* oddWords = "the last KEY lacks its VALUE";

// The command line's grammar, and the subcommand that was chosen.
class CommandLine {
public:
    CommandLine();

    int run(int argumentCount, char** arguments);

private:
    template <class Options>
    using Command = int (*)(OpenedPhone&, const Options&);

    CLI::App* addCommand(const char* name, const char* help, std::function<int()> run);

    // A subcommand that works on a phone.
    template <class Options>
    CLI::App* addPhoneCommand(const char* name, const char* help, Command<Options> command, const Options& options) {
        return addCommand(name, help, [this, command, &options] {
            if (namesReport(_common.phone)) return refuse(noReport);
            auto phone = OpenedPhone::open(_common, "trivel3ctl");
            return phone ? command(*phone, options) : fail(failed, phone.error());
        });
    }

    // One that works on a support report, too.
    template <class Options>
    CLI::App* addReportCommand(const char* name, const char* help, Command<Options> command, const Options& options) {
        return addCommand(name, help, [this, command, &options] {
            auto phone = OpenedPhone::openPhoneOrReport(_common, "trivel3ctl");
            return phone ? command(*phone, options) : fail(failed, phone.error());
        });
    }

    void addColourOption();
    void addPageCommands();
    void addSettingCommands();
    void addTravelCommands();
    void addHistoryCommands();
    void addHelpCommand();
    int printHelp() const;
    void addPlistCommands();
    std::string helpCommand() const;
    std::string unknownSubcommand() const;
    int refuse(const std::string& reason) const;
    int openScreen() const;

    CLI::App _app{"The settings of Trivel 3 on a phone's file system"};
    PhoneOptions _common;
    ShowOptions _show;
    GetOptions _get;
    SetOptions _set;
    UnsetOptions _unset;
    ListOptions _list;
    ExplainOptions _explain;
    ResetOptions _reset;
    PhoneCommandOptions _phone;
    DiffOptions _diff;
    ExportOptions _export;
    ApplyOptions _apply;
    HistoryOptions _history;
    UndoOptions _undo;
    MonitorOptions _monitor;
    DriveOptions _drive;
    std::vector<std::string> _openableSchemes;
    LintOptions _lint;
    ConvertOptions _convert;
    std::vector<std::string> _helpOn;
    ReportOptions _report;
    std::function<int()> _chosen;
};

CommandLine::CommandLine() {
    _app.name("trivel3ctl");
    _app.formatter(std::make_shared<HelpFormat>());
    _app.set_version_flag("--version,-V", "trivel3ctl " TRIVEL3_VERSION);
    _app.set_help_flag("--help,-h", "Print this help and exit");
    // Options of the program are taken after the subcommand too.
    _app.fallthrough();
    // Once there is a subcommand, no further word is taken for one: a page may be named "list".
    _app.require_subcommand(0, 1);
    _app.footer(
        "Without a subcommand, an interactive screen opens on the terminal.\n"
        "'trivel3ctl SUBCOMMAND --help' tells more of each.");
    _common.addTo(_app);
    addColourOption();
    addPageCommands();
    addSettingCommands();
    addTravelCommands();
    addHistoryCommands();
    addPlistCommands();
    addHelpCommand();
}

void CommandLine::addColourOption() {
    const std::vector<std::pair<std::string, ColourUse>> uses = {
        {"auto", ColourUse::automatic}, {"always", ColourUse::always}, {"never", ColourUse::never}};
    const auto use = [this, uses](const std::string& word) {
        _show.colour = std::ranges::find(uses, word, &std::pair<std::string, ColourUse>::first)->second;
    };
    _app.add_option_function<std::string>("--color", use,
                                          "Whether pages are coloured; auto, the default: on a terminal that has it")
        ->check(CLI::IsMember({"auto", "always", "never"}))
        ->type_name("WHEN");
}

CLI::App* CommandLine::addCommand(const char* name, const char* help, std::function<int()> run) {
    CLI::App* command = _app.add_subcommand(name, help);
    command->footer("The options of 'trivel3ctl --help', --phone and --device among them, are taken here too.");
    command->callback([this, run = std::move(run)] { _chosen = run; });
    return command;
}

void CommandLine::addPageCommands() {
    CLI::App* show = addReportCommand("show", "Print a page as it would look now", runShow, _show);
    show->add_option("PAGE", _show.page, "Titles from the root page, such as \"Advanced Options/Quick Launcher\"");
    show->add_flag("--json", _show.json, "Print the page as JSON");

    CLI::App* drive =
        addReportCommand("drive", "Carry out commands from standard input, a JSON object a line", runDrive, _drive);
    drive->add_option("--can-open", _openableSchemes, "URL schemes that count as having a program")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->type_name("SCHEME,...");
}

void CommandLine::addSettingCommands() {
    CLI::App* get = addReportCommand("get", "Print settings' values", runGet, _get);
    get->add_option("KEY", _get.keys, "The settings")->required();
    get->add_flag("--json", _get.json, "Print them as JSON");

    CLI::App* set = addPhoneCommand("set", "Change settings, all in one change", runSet, _set);
    set->add_option("KEY", _set.words,
                    "Settings and their new values: true, false, yes, no, on, off, 1 or 0; a decimal integer; or the "
                    "name of a choice")
        ->type_name("VALUE")
        ->type_size(2)
        ->required();
    set->add_option("--type", _set.type,
                    "How to read the values, for keys outside the catalogue: boolean, integer or string")
        ->transform(CLI::CheckedTransformer(std::vector<std::pair<std::string, std::string>>{{"boolean", "boolean"},
                                                                                             {"integer", "integer"},
                                                                                             {"string", "string"},
                                                                                             {"bool", "boolean"},
                                                                                             {"int", "integer"}})
                        .description("{boolean,integer,string}"))
        ->type_name("TYPE");

    CLI::App* unset = addPhoneCommand("unset", "Remove settings from the settings file", runUnset, _unset);
    CLI::Option* unsetKeys = unset->add_option("KEY", _unset.keys, "The settings, known or not");
    unset->add_flag("--all", _unset.all, "Every setting that is stored")->excludes(unsetKeys);

    CLI::App* list = addReportCommand("list", "Print settings", runList, _list);
    list->add_option("KEY", _list.keys, "The settings; all, without any");
    list->add_flag("--json", _list.json, "Print them as JSON");

    CLI::App* explain =
        addReportCommand("explain", "Tell what settings are for, and what they depend on", runExplain, _explain);
    explain->add_option("KEY", _explain.keys, "The settings; all, without any");
    explain->add_flag("--json", _explain.json, "Tell it as JSON");

    CLI::App* reset = addPhoneCommand("reset", "Put settings back to their defaults", runReset, _reset);
    CLI::Option* keys = reset->add_option("KEY", _reset.keys, "The settings");
    CLI::Option* all = reset->add_flag("--all", _reset.all, "Every setting");
    keys->excludes(all);

    CLI::App* monitor =
        addPhoneCommand("monitor", "Print changes as they are announced, until interrupted", runMonitor, _monitor);
    monitor->add_flag("--json", _monitor.json, "Print one JSON object a line");
    monitor->add_flag("--unannounced", _monitor.unannounced, "Print, too, changes that nobody has announced");
}

void CommandLine::addTravelCommands() {
    CLI::App* phone = addReportCommand("phone", "Tell what is known of the phone", runPhone, _phone);
    phone->add_flag("--json", _phone.json, "Tell it as JSON");
    phone->add_flag("--identifiers", _phone.identifiers, "Tell a report's UniqueDeviceID too");

    CLI::App* diff = addCommand("diff", "Print the settings that differ", [this] { return runDiff(_common, _diff); });
    diff->add_option("WHERE", _diff.where,
                     "What to compare: a phone's folder, an export, a settings file, a support report, or what list "
                     "--json has printed; one is compared with the defaults, none stands for the phone");
    diff->add_flag("--exit-code", _diff.exitCode, "End with status 3 where there is a difference");
    diff->add_flag("--json", _diff.json, "Print it as JSON");

    CLI::App* exported = addReportCommand("export", "Write what is stored, for another phone", runExport, _export);
    exported->add_option("-o,--output", _export.output, "Where to write; - for standard output")->type_name("FILE");

    CLI::App* report =
        addPhoneCommand("report", "Write the report that goes with a support e-mail", runReport, _report);
    report->add_option("-o,--output", _report.output, "Where to write; - for standard output")->type_name("FILE");

    CLI::App* apply = addPhoneCommand("apply", "Store the settings that a file holds", runApply, _apply);
    apply
        ->add_option("FILE", _apply.file,
                     "An export, a settings file, a support report or a list; - for standard input")
        ->required();
    apply->add_flag("--dry-run", _apply.isDryRun, "Print what would differ, and change nothing");
    apply->add_option("--only", _apply.only, "The settings, and the applications of exceptions, to touch")
        ->type_name("KEY");
    apply->add_flag("--exact", _apply.isExact, "Remove what the file does not hold");
}

void CommandLine::addHelpCommand() {
    CLI::App* help = addCommand("help", "Print what a subcommand does and takes", [this] { return printHelp(); });
    help->footer("");
    help->add_option("COMMAND", _helpOn, "The subcommand, and that of plist")->type_name("");
}

int CommandLine::printHelp() const {
    const CLI::App* command = &_app;
    std::string before;
    for (const std::string& word : _helpOn) {
        const auto named = command->get_subcommands([&](const CLI::App* each) { return each->get_name() == word; });
        if (named.empty()) return refuse(inQuotes(word) + " is no subcommand");
        before += (before.empty() ? "" : " ") + command->get_name();
        command = named.front();
    }
    // Nothing but "help" itself has been parsed, which would be what the program's own help is on.
    print(_helpOn.empty() ? _app.get_formatter()->make_help(&_app, _app.get_name(), CLI::AppFormatMode::Normal)
                          : command->help(before));
    return done;
}

void CommandLine::addHistoryCommands() {
    CLI::App* history =
        addPhoneCommand("history", "Print what has been changed on the phone, newest first", runHistory, _history);
    CLI::Option* json = history->add_flag("--json", _history.json, "Print it as JSON");
    CLI::Option* bytes =
        history->add_option("--bytes", _history.bytesOf, "Print what the file held that this change has written over");
    bytes->type_name("CHANGE")->excludes(json);
    history->add_flag("--forget", _history.forget, "Delete the history of this phone")->excludes(json)->excludes(bytes);

    CLI::App* undo = addPhoneCommand("undo", "Take the last turn back, or the changes that are named", runUndo, _undo);
    undo->add_option("CHANGE", _undo.changes, "Numbers of changes, as 'trivel3ctl history' prints them");
    undo->add_flag("--force", _undo.force, "Take back what has been changed since, too");
}

void CommandLine::addPlistCommands() {
    CLI::App* plist = _app.add_subcommand("plist", "Check and convert property lists");
    plist->fallthrough();
    // These work on files of this machine: no option of the program is about them.
    plist->footer("");
    plist->require_subcommand(1);
    CLI::App* lint = plist->add_subcommand("lint", "Tell whether files are property lists");
    lint->add_option("FILE", _lint.files, "The files")->required();
    lint->callback([this] { _chosen = [this] { return runPlistLint(_lint); }; });

    CLI::App* convert = plist->add_subcommand("convert", "Write a property list in another format");
    convert->add_option("FORMAT", _convert.format, "xml1, binary1 or json")
        ->required()
        ->check(CLI::IsMember({"xml1", "binary1", "json"}));
    convert->add_option("FILE", _convert.file, "The property list")->required();
    convert->add_option("-o,--output", _convert.output, "Where to write; - for standard output")->type_name("OUT");
    convert->callback([this] { _chosen = [this] { return runPlistConvert(_convert); }; });
}

// How to ask for help on what the user was about to do.
std::string CommandLine::helpCommand() const {
    std::string command = "trivel3ctl";
    for (const CLI::App* app = &_app; !app->get_subcommands().empty();) {
        app = app->get_subcommands().front();
        command += " " + app->get_name();
    }
    return command + " --help";
}

// Tells the word that stands where a subcommand should from other words that are not expected.
std::string CommandLine::unknownSubcommand() const {
    const CLI::App* app = &_app;
    while (!app->get_subcommands().empty())
        app = app->get_subcommands().front();
    std::vector<std::string> names;
    for (const CLI::App* command : app->get_subcommands({}))
        names.push_back(command->get_name());
    const auto words = _app.remaining(true);
    if (names.empty() || words.empty() || words.front().starts_with('-')) return {};
    return inQuotes(words.front()) + " is no subcommand" + didYouMean(nearestSpelling(words.front(), names));
}

int CommandLine::refuse(const std::string& reason) const {
    return fail(wrongUsage, reason + " (see '" + helpCommand() + "')");
}

int CommandLine::run(int argumentCount, char** arguments) {
    if (asksForCompletion(argumentCount, arguments))
        return completeWords(_app, argumentCount, arguments, wordsOfArgument);
    try {
        _app.parse(argumentCount, arguments);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) return _app.exit(error);
        if (const std::string unknown = unknownSubcommand(); !unknown.empty()) return refuse(unknown);
        if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) && _app.got_subcommand("set")) return refuse(oddWords);
        const bool isTooMuch = dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr;
        return refuse(isTooMuch ? "not expected: " + CLI::detail::join(_app.remaining(true), " ") : error.what());
    }
    constexpr std::size_t mostPlaces = 2;
    if (_diff.where.size() > mostPlaces) return refuse("not expected: " + _diff.where[mostPlaces]);
    if (_set.words.size() % 2 != 0) return refuse(oddWords);
    if (_app.got_subcommand("drive") && _common.phone == "-") return refuse(inputIsTaken);
    if (_app.got_subcommand("reset") && _reset.keys.empty() && !_reset.all) {
        return refuse("name the settings to reset, or give --all");
    }
    if (_app.got_subcommand("unset") && _unset.keys.empty() && !_unset.all) {
        return refuse("name the settings to remove, or give --all");
    }
    _drive.openableSchemes = {_openableSchemes.begin(), _openableSchemes.end()};
    return _chosen ? _chosen() : openScreen();
}

int CommandLine::openScreen() const {
    if (_common.phone == "-") return refuse(inputIsTaken);
    auto phone = OpenedPhone::openPhoneOrReport(_common, "trivel3ctl");
    return phone ? runScreen(*phone, _show.colour) : fail(failed, phone.error());
}

}  // namespace

int runCommandLine(int argumentCount, char** arguments) {
    return CommandLine().run(argumentCount, arguments);
}

}  // namespace hosts::terminal
