// SPDX-License-Identifier: MIT
#include "hosts/terminal/command_line.h"

#include <CLI/CLI.hpp>
#include <functional>
#include <string>
#include <vector>

#include "hosts/session/completion.h"
#include "hosts/session/exit_status.h"
#include "hosts/session/nearest_spelling.h"
#include "hosts/terminal/commands/argument_words.h"
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/render/printable.h"

namespace hosts::terminal {
namespace {

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
            auto phone = OpenedPhone::open(_common, "trivel3ctl");
            return phone ? command(*phone, options) : fail(failed, phone.error());
        });
    }

    void addPageCommands();
    void addSettingCommands();
    void addHistoryCommands();
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
    ListOptions _list;
    ResetOptions _reset;
    HistoryOptions _history;
    UndoOptions _undo;
    MonitorOptions _monitor;
    DriveOptions _drive;
    std::vector<std::string> _openableSchemes;
    LintOptions _lint;
    ConvertOptions _convert;
    std::function<int()> _chosen;
};

CommandLine::CommandLine() {
    _app.name("trivel3ctl");
    _app.set_version_flag("--version", "trivel3ctl " TRIVEL3_VERSION);
    _app.set_help_flag("--help,-h", "Print this help and exit");
    // Options of the program are taken after the subcommand too.
    _app.fallthrough();
    // Once there is a subcommand, no further word is taken for one: a page may be named "list".
    _app.require_subcommand(0, 1);
    _app.footer(
        "Without a subcommand, an interactive screen opens on the terminal.\n"
        "'trivel3ctl SUBCOMMAND --help' tells more of each.");
    _common.addTo(_app);
    addPageCommands();
    addSettingCommands();
    addHistoryCommands();
    addPlistCommands();
}

CLI::App* CommandLine::addCommand(const char* name, const char* help, std::function<int()> run) {
    CLI::App* command = _app.add_subcommand(name, help);
    command->footer("The options of 'trivel3ctl --help', --phone and --device among them, are taken here too.");
    command->callback([this, run = std::move(run)] { _chosen = run; });
    return command;
}

void CommandLine::addPageCommands() {
    CLI::App* show = addPhoneCommand("show", "Print a page as it would look now", runShow, _show);
    show->add_option("PAGE", _show.page, "Titles from the root page, such as \"Advanced Options/Quick Launcher\"");
    show->add_flag("--json", _show.json, "Print the page as JSON");

    CLI::App* drive =
        addPhoneCommand("drive", "Carry out commands from standard input, a JSON object a line", runDrive, _drive);
    drive->add_option("--can-open", _openableSchemes, "URL schemes that count as having a program")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->type_name("SCHEME,...");
}

void CommandLine::addSettingCommands() {
    CLI::App* get = addPhoneCommand("get", "Print a setting's value", runGet, _get);
    get->add_option("KEY", _get.key, "The setting")->required();

    CLI::App* set = addPhoneCommand("set", "Change a setting", runSet, _set);
    set->add_option("KEY", _set.key, "The setting")->required();
    set->add_option("VALUE", _set.value, "Its new value: true, false, yes, no, on, off, 1 or 0; or a decimal integer")
        ->required();
    set->add_option("--type", _set.type, "How to read the value, for a key outside the catalogue")
        ->check(CLI::IsMember({"bool", "int", "string"}))
        ->type_name("TYPE");

    CLI::App* list = addPhoneCommand("list", "Print every setting", runList, _list);
    list->add_flag("--json", _list.json, "Print them as JSON");

    CLI::App* reset = addPhoneCommand("reset", "Put settings back to their defaults", runReset, _reset);
    CLI::Option* keys = reset->add_option("KEY", _reset.keys, "The settings");
    CLI::Option* all = reset->add_flag("--all", _reset.all, "Every setting");
    keys->excludes(all);

    CLI::App* monitor =
        addPhoneCommand("monitor", "Print changes as they are announced, until interrupted", runMonitor, _monitor);
    monitor->add_flag("--json", _monitor.json, "Print one JSON object a line");
    monitor->add_flag("--unannounced", _monitor.unannounced, "Print, too, changes that nobody has announced");
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
    return inQuotes(words.front()) + " is no subcommand; did you mean '" + nearestSpelling(words.front(), names) + "'?";
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
        const std::string unknown = unknownSubcommand();
        return refuse(unknown.empty() ? error.what() : unknown);
    }
    if (_app.got_subcommand("reset") && _reset.keys.empty() && !_reset.all) {
        return refuse("name the settings to reset, or give --all");
    }
    _drive.openableSchemes = {_openableSchemes.begin(), _openableSchemes.end()};
    return _chosen ? _chosen() : openScreen();
}

int CommandLine::openScreen() const {
    auto phone = OpenedPhone::open(_common, "trivel3ctl");
    return phone ? runScreen(*phone) : fail(failed, phone.error());
}

}  // namespace

int runCommandLine(int argumentCount, char** arguments) {
    return CommandLine().run(argumentCount, arguments);
}

}  // namespace hosts::terminal
