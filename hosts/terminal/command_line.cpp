// SPDX-License-Identifier: MIT
#include "hosts/terminal/command_line.h"

#include <CLI/CLI.hpp>
#include <functional>
#include <string>

#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/exit_status.h"
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
    using Command = int (*)(ProgramContext&, const Options&);

    CLI::App* addCommand(const char* name, const char* help, std::function<int()> run);

    // A subcommand that works on a phone.
    template <class Options>
    CLI::App* addPhoneCommand(const char* name, const char* help, Command<Options> command, const Options& options) {
        return addCommand(name, help, [this, command, &options] {
            std::string error;
            auto context = ProgramContext::open(_common, error);
            return context ? command(*context, options) : fail(failed, printable(error));
        });
    }

    void addCommonOptions();
    void addPageCommands();
    void addSettingCommands();
    void addPlistCommands();
    int refuse(const CLI::ParseError& error);

    CLI::App _app{"The settings of Trivel 3 on a phone's file system"};
    CommonOptions _common;
    std::string _deviceName{usualDeviceShape().name};
    ShowOptions _show;
    GetOptions _get;
    SetOptions _set;
    ListOptions _list;
    ResetOptions _reset;
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
    _app.set_help_flag("--help", "Print this help and exit");
    // Options of the program are taken after the subcommand too.
    _app.fallthrough();
    addCommonOptions();
    addPageCommands();
    addSettingCommands();
    addPlistCommands();
}

void CommandLine::addCommonOptions() {
    _app.add_option("--phone", _common.phone, "Folder that stands for the root of the phone's file system")
        ->envname("TRIVEL3_PHONE")
        ->type_name("DIR");
    std::vector<std::string> names;
    for (const DeviceShape& shape : deviceShapes())
        names.emplace_back(shape.name);
    _app.add_option("--device", _deviceName, "The phone's shape")->check(CLI::IsMember(names))->type_name("NAME");
}

CLI::App* CommandLine::addCommand(const char* name, const char* help, std::function<int()> run) {
    CLI::App* command = _app.add_subcommand(name, help);
    command->callback([this, run = std::move(run)] { _chosen = run; });
    return command;
}

void CommandLine::addPageCommands() {
    CLI::App* show = addPhoneCommand("show", "Print a page as it would look now", runShow, _show);
    show->add_option("PAGE", _show.page, "Titles from the root page, such as \"Advanced Options/Quick Launcher\"");
    show->add_flag("--json", _show.json, "Print the page as JSON");

    CLI::App* drive = addPhoneCommand("drive", "Carry out JSON commands from standard input", runDrive, _drive);
    drive->add_option("--can-open", _openableSchemes, "URL schemes that count as having a program")
        ->delimiter(',')
        ->type_name("SCHEME,...");
}

void CommandLine::addSettingCommands() {
    CLI::App* get = addPhoneCommand("get", "Print a setting's value", runGet, _get);
    get->add_option("KEY", _get.key, "The setting")->required();

    CLI::App* set = addPhoneCommand("set", "Change a setting", runSet, _set);
    set->add_option("KEY", _set.key, "The setting")->required();
    set->add_option("VALUE", _set.value, "Its new value")->required();
    set->add_option("--type", _set.type, "How to read the value of a key that is not known")
        ->check(CLI::IsMember({"bool", "int", "string"}))
        ->type_name("TYPE");

    CLI::App* list = addPhoneCommand("list", "Print every setting", runList, _list);
    list->add_flag("--json", _list.json, "Print them as JSON");

    CLI::App* reset = addPhoneCommand("reset", "Put settings back to their defaults", runReset, _reset);
    CLI::Option* keys = reset->add_option("KEY", _reset.keys, "The settings");
    CLI::Option* all = reset->add_flag("--all", _reset.all, "Every setting");
    keys->excludes(all);

    CLI::App* monitor = addPhoneCommand("monitor", "Print changes as they are announced", runMonitor, _monitor);
    monitor->add_flag("--json", _monitor.json, "Print one JSON object a line");
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

int CommandLine::refuse(const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) return _app.exit(error);
    return fail(wrongUsage, printable(error.what()) + " (see 'trivel3ctl --help')");
}

int CommandLine::run(int argumentCount, char** arguments) {
    try {
        _app.parse(argumentCount, arguments);
    } catch (const CLI::ParseError& error) {
        return refuse(error);
    }
    _common.device = findDeviceShape(_deviceName);
    _drive.openableSchemes = {_openableSchemes.begin(), _openableSchemes.end()};
    if (_chosen && _app.got_subcommand("reset") && _reset.keys.empty() && !_reset.all) {
        return fail(wrongUsage, "name the settings to reset, or give --all");
    }
    if (!_chosen) return fail(wrongUsage, "name a subcommand (see 'trivel3ctl --help')");
    return _chosen();
}

}  // namespace

int runCommandLine(int argumentCount, char** arguments) {
    return CommandLine().run(argumentCount, arguments);
}

}  // namespace hosts::terminal
