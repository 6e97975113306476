// SPDX-License-Identifier: MIT
#include "hosts/session/report_phone.h"

#include <optional>
#include <utility>

#include "hosts/phones/device_information.h"
#include "hosts/phones/fault_place.h"
#include "hosts/session/installed_package.h"
#include "hosts/session/memory_files.h"
#include "hosts/session/services.h"
#include "hosts/session/support_report.h"
#include "platform/foundation/property_list.h"

namespace hosts {
namespace {

using platform::Dictionary;
using platform::Problem;
using platform::Result;

constexpr std::string_view applicationsFolder = "/Applications";

/// Nothing happens to it.
class NoEvents final : public PhoneEvents {
public:
    int descriptor() const override { return -1; }
    std::optional<PhoneEvent> next() override { return std::nullopt; }
    const std::optional<Problem>& whyNoNotifications() const override { return _why; }

private:
    std::optional<Problem> _why;
};

class ReportPhone final : public Phone {
public:
    ReportPhone(MemoryFiles held, const std::string& name)
        : _held(std::move(held)), _files(_held), _device(_files, {}), _identity{name, name, PhoneKind::report} {}

    platform::FileSystem& files() override { return _files; }
    platform::DarwinNotifyCenter& notifications() override { return _notifications; }
    platform::DeviceQuery& device() override { return _device; }
    Result<platform::Done> useDeviceInformation(const std::string& file) override { return _device.useFile(file); }
    void tell(PhoneListener*, bool) override {}
    std::unique_ptr<PhoneEvents> observe(std::span<const std::string>) override { return std::make_unique<NoEvents>(); }
    const PhoneIdentity& identity() const override { return _identity; }
    PhonePromises promises() override { return {.keepsChanges = false}; }
    std::optional<double> roundTrip() override { return std::nullopt; }
    std::string mark() override { return {}; }

private:
    MemoryFiles _held;
    ScratchFileSystem _files;
    QuietNotifyCenter _notifications;
    DeviceInformation _device;
    PhoneIdentity _identity;
};

// Each by itself, so that the pages that tick applications list them.
void putTickedApplications(MemoryFiles& files, const Dictionary& settings) {
    std::size_t number = 0;
    for (const auto& [key, value] : settings) {
        if (!value.dictionary()) continue;
        for (const auto& [identifier, ticked] : *value.dictionary()) {
            if (!ticked.boolean()) continue;
            const std::string folder = std::string(applicationsFolder) + "/" + std::to_string(++number) + ".app";
            files.put(folder + "/Info.plist",
                      Dictionary{{"CFBundleIdentifier", identifier}, {"CFBundleDisplayName", identifier}});
        }
    }
}

MemoryFiles filesOf(const SupportReport& report) {
    MemoryFiles files;
    files.put(std::string(DeviceInformation::phoneFile), report.device);
    if (report.packages) files.put(std::string(packageDatabase), *report.packages);
    if (!report.settings) return files;
    files.put("/var/mobile/Library/Preferences/com.fenwary.trivel3.plist", *report.settings);
    putTickedApplications(files, *report.settings);
    return files;
}

}  // namespace

Result<std::unique_ptr<Phone>> openReport(std::string_view bytes, const std::string& name) {
    const auto reading = platform::readPropertyList(bytes);
    if (!reading)
        return Problem{name, {}, "it is no support report: " + faultPlace(reading.error) + ": " + reading.error.reason};
    const Dictionary* const root = reading.value->dictionary();
    const auto report = root ? supportReportIn(*root) : std::nullopt;
    if (!report) {
        return Problem{
            name,
            {},
            "it is no support report; a settings file can be compared by 'trivel3ctl diff', and taken over by "
            "'trivel3ctl apply'"};
    }
    return std::unique_ptr<Phone>(std::make_unique<ReportPhone>(filesOf(*report), name));
}

}  // namespace hosts
