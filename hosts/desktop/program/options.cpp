// SPDX-License-Identifier: MIT
#include "hosts/desktop/program/options.h"

#include <CLI/CLI.hpp>
#include <string>

#include "hosts/desktop/model/phones.h"
#include "hosts/desktop/program/message_window.h"
#include "hosts/session/completion.h"
#include "hosts/session/exit_status.h"

namespace hosts::desktop {

Taste Options::over(Taste desktop) const {
    desktop.dark = dark.value_or(desktop.dark);
    desktop.highContrast = highContrast.value_or(desktop.highContrast);
    desktop.textScale = textScale.value_or(desktop.textScale);
    return desktop;
}

std::optional<Options> parseOptions(int argumentCount, char** arguments, int& status) {
    Options options;
    std::string appearanceName;
    std::string contrastName;
    CLI::App app{"The settings of Trivel 3 in a window"};
    app.name("trivel3-settings");
    app.set_version_flag("--version", "trivel3-settings " TRIVEL3_VERSION);
    app.set_help_flag("--help,-h", "Print this help and exit");
    options.addTo(app);
    std::vector<std::string> folders;
    app.add_option("folders", folders, "Phones to open, in place of --phone: folders, or their addresses (file:///…)")
        ->type_name("FOLDER")
        ->check(CLI::Validator(
            [](const std::string& text) {
                return folderNamed(QString::fromStdString(text)).isEmpty()
                           ? "'" + text + "' is no folder of this machine"
                           : std::string();
            },
            ""));
    app.add_option("--page", options.page, "The page to open: the titles of the links that lead there, with / between")
        ->type_name("TITLES");
    app.add_option("--appearance", appearanceName, "light or dark, whatever the desktop's is")
        ->check(CLI::IsMember({"light", "dark"}))
        ->type_name("NAME");
    app.add_option("--contrast", contrastName, "normal or high, whatever the desktop's is")
        ->check(CLI::IsMember({"normal", "high"}))
        ->type_name("NAME");
    app.add_option("--text-scale", options.textScale, "How large texts are, from 0.5 to 3, whatever the desktop says")
        ->check(CLI::Range(smallestTextScale, largestTextScale))
        ->type_name("NUMBER");
    app.add_option("--screenshots", options.screenshots, "Draw every page into PNG files in this folder and exit")
        ->type_name("DIR");
    if (asksForCompletion(argumentCount, arguments)) {
        status = completeWords(app, argumentCount, arguments, {});
        return std::nullopt;
    }
    try {
        app.parse(argumentCount, arguments);
    } catch (const CLI::ParseError& error) {
        const bool isAnswer = error.get_exit_code() == 0;
        status = isAnswer ? app.exit(error)
                          : failBeforeUser(argumentCount, arguments, wrongUsage,
                                           std::string(error.what()) + " (see 'trivel3-settings --help')");
        return std::nullopt;
    }
    for (std::string& folder : folders)
        folder = folderNamed(QString::fromStdString(folder)).toStdString();
    if (!folders.empty()) {
        options.phone = folders.front();
        options.further.assign(folders.begin() + 1, folders.end());
    }
    if (!appearanceName.empty()) options.dark = appearanceName == "dark";
    if (!contrastName.empty()) options.highContrast = contrastName == "high";
    return options;
}

}  // namespace hosts::desktop
