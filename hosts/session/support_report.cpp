// SPDX-License-Identifier: MIT
#include "hosts/session/support_report.h"

#include <cstddef>
#include <utility>

#include "hosts/hand_over/message_reader.h"
#include "hosts/phones/fault_place.h"
#include "hosts/system/module_function.h"
#include "platform/foundation/property_list.h"

namespace hosts {
namespace {

using platform::Dictionary;
using platform::Problem;
using platform::Result;

constexpr std::string_view settingsKey = "Preferences";
constexpr std::string_view packagesKey = "Packages";
constexpr std::string_view modelKey = "ProductType";
constexpr std::string_view deviceKeys[] = {"UniqueDeviceID", "ProductVersion", modelKey,
                                           "DiskUsage",      "DeviceColor",    "CPUArchitecture"};

// A phone's settings are some hundred.
constexpr std::size_t mostValues = 1'000'000;

Result<SupportReport> reportInPropertyList(std::string_view bytes) {
    const auto reading = platform::readPropertyListOfStrangers(bytes, mostValues);
    if (!reading)
        return Problem{.reason = "it is no support report: " + faultPlace(reading.error) + ": " + reading.error.reason};
    const Dictionary* const root = reading.value->dictionary();
    auto report = root ? supportReportIn(*root) : std::nullopt;
    if (report) return *std::move(report);
    return Problem{.reason =
                       "it is no support report; a settings file can be compared by 'trivel3ctl diff', and taken over "
                       "by 'trivel3ctl apply'"};
}

// By its first field, or what a mailbox file says in its place. No property list begins so.
bool isMessage(std::string_view bytes) {
    const std::size_t end = bytes.find_first_not_of("-0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
    return bytes.starts_with("From ") || (end != 0 && end < bytes.size() && bytes[end] == ':');
}

Result<SupportReport> reportInMessage(std::string_view bytes, const std::string& mailModule) {
    const auto read = loadFunction<ReadMailMessage>(mailModule, readMailMessageSymbol, "the mail module");
    if (!read) return read.error();
    std::optional<SupportReport> report;
    const auto take = [&report](std::string_view content) {
        auto found = reportInPropertyList(content);
        if (found) report = *std::move(found);
        return report.has_value();
    };
    Result<platform::Done> outcome = platform::Done();
    (*read)(bytes, take, outcome);
    if (report) return *std::move(report);
    const std::string none = "it is an e-mail that holds no support report";
    return Problem{.reason = outcome ? none : none + " as far as it can be read: " + outcome.error().reason};
}

}  // namespace

std::span<const std::string_view> deviceKeysOfReport() {
    return deviceKeys;
}

std::optional<SupportReport> supportReportIn(const Dictionary& root) {
    const platform::Value* const settings = root.find(settingsKey);
    const platform::Value* const packages = root.find(packagesKey);
    if (!settings || !packages || !root.contains(modelKey)) return std::nullopt;
    if (!settings->dictionary() && !settings->isNull()) return std::nullopt;
    SupportReport report;
    if (settings->dictionary()) report.settings = *settings->dictionary();
    if (packages->string()) report.packages = *packages->string();
    for (const auto& [key, value] : root) {
        if (key != settingsKey && key != packagesKey && !value.isNull()) report.device.set(key, value);
    }
    return report;
}

Result<SupportReport> readSupportReport(std::string_view bytes, const std::string& mailModule) {
    return isMessage(bytes) ? reportInMessage(bytes, mailModule) : reportInPropertyList(bytes);
}

}  // namespace hosts
