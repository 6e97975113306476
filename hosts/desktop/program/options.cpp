// SPDX-License-Identifier: MIT
#include "hosts/desktop/program/options.h"

#include <CLI/CLI.hpp>
#include <QRegularExpression>
#include <string>

#include "hosts/desktop/model/phones.h"
#include "hosts/desktop/program/message_window.h"
#include "hosts/desktop/program/window_size.h"
#include "hosts/phones/far/ssh_address.h"
#include "hosts/session/completion.h"
#include "hosts/session/exit_status.h"

namespace hosts::desktop {

Taste Options::over(Taste desktop) const {
    desktop.dark = dark.value_or(desktop.dark);
    desktop.highContrast = highContrast.value_or(desktop.highContrast);
    desktop.textScale = textScale.value_or(desktop.textScale);
    return desktop;
}

namespace {

// What is told in words of its own kind.
struct Words {
    std::vector<std::string> folders;
    std::string appearance;
    std::string contrast;
    std::string size;
};

std::string whyNoPhone(const std::string& text) {
    if (namesSshAddress(text)) {
        const auto address = parseSshAddress(text);
        return address ? "" : address.error().text();
    }
    return phoneNamed(QString::fromStdString(text)).isEmpty() ? "'" + text + "' is no folder of this machine" : "";
}

// Empty for what is none.
QSize sizeNamed(const std::string& text) {
    static const QRegularExpression form(QStringLiteral("^([0-9]{1,5})x([0-9]{1,5})$"));
    const auto match = form.match(QString::fromStdString(text));
    return match.hasMatch() ? QSize(match.captured(1).toInt(), match.captured(2).toInt()) : QSize();
}

std::string whyNoSize(const std::string& text) {
    const QSize size = sizeNamed(text);
    const bool fits = size.boundedTo(largestWindow).expandedTo(smallestWindow) == size;
    return fits ? "" : "'" + text + "' is no size from 260x200 to 8192x8192, such as 1280x800";
}

void addTo(CLI::App& app, Options& options, Words& words) {
    app.name("trivel3-settings");
    app.set_version_flag("--version", "trivel3-settings " TRIVEL3_VERSION);
    app.set_help_flag("--help,-h", "Print this help and exit");
    options.addTo(app);
    app.add_option("FOLDER", words.folders,
                   "Phones to open, in place of --phone: folders, files with support reports, or their addresses "
                   "(file:///…)")
        ->type_name("")
        ->check(CLI::Validator(whyNoPhone, ""));
    app.add_option("--page", options.page, "The page to open: the titles of the links that lead there, with / between")
        ->type_name("TITLES");
    app.add_option("--appearance", words.appearance, "light or dark, whatever the desktop's is")
        ->check(CLI::IsMember({"light", "dark"}))
        ->type_name("NAME");
    app.add_option("--contrast", words.contrast, "normal or high, whatever the desktop's is")
        ->check(CLI::IsMember({"normal", "high"}))
        ->type_name("NAME");
    app.add_option("--text-scale", options.textScale, "How large texts are, from 0.5 to 3, whatever the desktop says")
        ->check(CLI::Range(smallestTextScale, largestTextScale))
        ->type_name("NUMBER");
    app.add_option("--size", words.size, "The window's size in points, such as 1280x800")
        ->check(CLI::Validator(whyNoSize, ""))
        ->type_name("WIDTHxHEIGHT");
    app.add_option("--screenshots", options.screenshots, "Draw every page into PNG files in this folder and exit")
        ->type_name("DIR");
}

void take(const Words& words, Options& options) {
    for (const std::string& word : words.folders) {
        const std::string phone = phoneNamed(QString::fromStdString(word)).toStdString();
        if (&word == &words.folders.front())
            options.phone = phone;
        else
            options.further.push_back(phone);
    }
    if (!words.appearance.empty()) options.dark = words.appearance == "dark";
    if (!words.contrast.empty()) options.highContrast = words.contrast == "high";
    if (!words.size.empty()) options.size = sizeNamed(words.size);
}

}  // namespace

std::optional<Options> parseOptions(int argumentCount, char** arguments, int& status) {
    Options options;
    Words words;
    CLI::App app{"The settings of Trivel 3 in a window"};
    addTo(app, options, words);
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
    take(words, options);
    return options;
}

}  // namespace hosts::desktop
