// SPDX-License-Identifier: MIT
#include "hosts/session/report_phone.h"

#include <filesystem>
#include <optional>
#include <set>
#include <utility>

#include "hosts/phones/device_information.h"
#include "hosts/session/installed_package.h"
#include "hosts/session/memory_files.h"
#include "hosts/session/services.h"
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

class ReportFiles final : public ScratchFileSystem {
public:
    using ScratchFileSystem::ScratchFileSystem;

    Result<std::vector<std::string>> listFolder(std::string_view path) const override {
        if (path.starts_with(applicationsFolder)) _areApplicationsListed = true;
        return ScratchFileSystem::listFolder(path);
    }
    bool areApplicationsListed() const { return _areApplicationsListed; }

private:
    mutable bool _areApplicationsListed = false;
};

class PhoneInMemory final : public ReportPhone {
public:
    PhoneInMemory(MemoryFiles held, const std::string& name)
        : _held(std::move(held)),
          _files(_held),
          _device(_files, {}),
          _identity{name, std::filesystem::path(name).filename(), PhoneKind::report} {}

    platform::FileSystem& files() override { return _files; }
    platform::DarwinNotifyCenter& notifications() override { return _notifications; }
    platform::DeviceQuery& device() override { return _device; }
    Result<platform::Done> useDeviceInformation(const std::string& file) override { return _device.useFile(file); }
    void tell(PhoneListener*, bool) override {}
    std::unique_ptr<PhoneEvents> observe(std::span<const std::string>, std::span<const std::string>) override {
        return std::make_unique<NoEvents>();
    }
    const PhoneIdentity& identity() const override { return _identity; }
    PhonePromises promises() override { return {.keepsChanges = false}; }
    std::optional<double> roundTrip() override { return std::nullopt; }
    std::string mark() override { return {}; }
    void forgetChanges() override { _files.forgetChanges(); }
    bool wasAskedForApplications() const override { return _files.areApplicationsListed(); }

private:
    MemoryFiles _held;
    ReportFiles _files;
    QuietNotifyCenter _notifications;
    DeviceInformation _device;
    PhoneIdentity _identity;
};

// Each by itself, so that the pages that tick applications list them.
void putTickedApplications(MemoryFiles& files, const Dictionary& settings) {
    std::set<std::string_view> put;
    for (const auto& [key, value] : settings) {
        if (!value.dictionary()) continue;
        for (const auto& [identifier, ticked] : *value.dictionary()) {
            if (!ticked.boolean() || !put.insert(identifier).second) continue;
            const std::string folder = std::string(applicationsFolder) + "/" + std::to_string(put.size()) + ".app";
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

std::unique_ptr<ReportPhone> openReport(const SupportReport& report, const std::string& name) {
    return std::make_unique<PhoneInMemory>(filesOf(report), name);
}

}  // namespace hosts
