// SPDX-License-Identifier: MIT
#include "hosts/session/report_phone.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "hosts/phones/device_information.h"
#include "hosts/session/services.h"
#include "platform/foundation/property_list.h"

namespace hosts {
namespace {

using platform::Dictionary;
using platform::Problem;
using platform::Result;
using platform::Stamp;
using platform::Value;

constexpr std::string_view applicationsFolder = "/Applications";

/// Files in memory, by their paths.
class MemoryFiles final : public platform::FileSystem {
public:
    using platform::FileSystem::readFile;

    void put(const std::string& path, std::string contents) { _contents.insert_or_assign(path, std::move(contents)); }
    void put(const std::string& path, Dictionary contents) {
        if (auto written = platform::writeBinaryPropertyList(Value(std::move(contents)))) put(path, *written.bytes);
    }

    Result<Stamp> look(std::string_view path) const override {
        const auto file = _contents.find(path);
        if (file == _contents.end()) return nothing(path);
        const auto number = static_cast<std::uint64_t>(std::distance(_contents.begin(), file)) + 1;
        return Stamp{.inode = number, .size = file->second.size(), .isSettled = true};
    }
    Result<Stamp> readFile(std::string_view path, std::string& contents, std::size_t limit) const override {
        contents.clear();
        const auto file = _contents.find(path);
        if (file == _contents.end() || file->second.size() > limit) return nothing(path);
        contents = file->second;
        return look(path);
    }
    Result<std::vector<std::string>> listFolder(std::string_view path) const override {
        const std::string folder = path.ends_with('/') ? std::string(path) : std::string(path) + "/";
        std::vector<std::string> names;
        for (auto file = _contents.lower_bound(folder); file != _contents.end() && file->first.starts_with(folder);
             ++file) {
            std::string name = file->first.substr(folder.size());
            name.resize(std::min(name.find('/'), name.size()));
            if (names.empty() || names.back() != name) names.push_back(std::move(name));
        }
        if (names.empty()) return nothing(path);
        std::ranges::sort(names);
        return names;
    }
    Result<Stamp> changeFile(std::string_view path, const platform::Change&) override { return nothing(path); }

private:
    static Problem nothing(std::string_view path) {
        return {std::string(path), "cannot read", "it is not in the report"};
    }

    std::map<std::string, std::string, std::less<>> _contents;
};

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
          _identity{name, std::filesystem::path(name).filename()} {}

    platform::FileSystem& files() override { return _files; }
    platform::DarwinNotifyCenter& notifications() override { return _notifications; }
    platform::DeviceQuery& device() override { return _device; }
    Result<platform::Done> useDeviceInformation(const std::string& file) override { return _device.useFile(file); }
    void tell(PhoneListener*, bool) override {}
    std::unique_ptr<PhoneEvents> observe(std::span<const std::string>, std::span<const std::string>) override {
        return std::make_unique<NoEvents>();
    }
    const PhoneIdentity& identity() const override { return _identity; }
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
    if (report.packages) files.put("/var/lib/dpkg/status", *report.packages);
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
