// SPDX-License-Identifier: MIT
#include <filesystem>

#include "hosts/session/exit_status.h"
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/commands/input_file.h"
#include "hosts/terminal/commands/settings_command.h"
#include "hosts/terminal/render/printable.h"
#include "hosts/terminal/render/standard_output.h"
#include "hosts/terminal/render/value_json.h"
#include "hosts/terminal/travel/settings_difference.h"

namespace hosts::terminal {
namespace {

using platform::Result;

Result<StoredSettings> storedOnPhone(const PhoneOptions& options) {
    auto phone = namesReport(options.phone) ? OpenedPhone::openPhoneOrReport(options, "trivel3ctl")
                                            : OpenedPhone::openToLook(options);
    if (!phone) return phone.error();
    auto command = SettingsCommand::open(*phone);
    if (!command) return command.error();
    auto stored = command->stored();
    if (stored) stored->tellsExceptions = !phone->isReport;
    return stored;
}

Result<StoredSettings> storedAt(const std::string& where, PhoneOptions options) {
    std::error_code ignored;
    if (where == "-" || !std::filesystem::is_directory(where, ignored)) return readSettingsInput(where);
    options.phone = where;
    return storedOnPhone(options);
}

void remarkOnExceptions(const StoredSettings& stored, const std::string& name) {
    if (!stored.tellsExceptions) {
        warn(name + " cannot tell which applications are exceptions: these are not compared");
    }
}

/// What is compared, and how a side is called.
struct Sides {
    StoredSettings left;
    StoredSettings right;
};

Result<Sides> sidesOf(const PhoneOptions& options, const std::vector<std::string>& where) {
    auto right = where.empty() ? storedOnPhone(options) : storedAt(where.back(), options);
    if (!right) return right.error();
    auto left = where.size() < 2 ? Result(StoredSettings()) : storedAt(where.front(), options);
    if (!left) return left.error();
    if (where.empty()) remarkOnExceptions(*right, options.phone == "-" ? "standard input" : options.phone);
    for (const std::string& name : where)
        remarkOnExceptions(&name == &where.back() ? *right : *left, name);
    return Sides{*std::move(left), *std::move(right)};
}

}  // namespace

int runDiff(const PhoneOptions& phone, const DiffOptions& options) {
    const auto sides = sidesOf(phone, options.where);
    if (!sides) return fail(failed, sides.error());
    auto opened = OpenedPhone::openToLook(namesReport(phone.phone) ? PhoneOptions() : phone);
    if (!opened) return fail(failed, opened.error());
    const auto command = SettingsCommand::open(*opened);
    if (!command) return fail(failed, command.error());
    const SettingsDifference difference = differenceOf(sides->left, sides->right, command->known());
    print(options.json ? jsonLine(differenceJson(difference, command->settings().observedFiles())) + "\n"
                       : differenceText(difference));
    return options.exitCode && !difference.isNone() ? differs : done;
}

}  // namespace hosts::terminal
