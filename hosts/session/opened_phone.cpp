// SPDX-License-Identifier: MIT
#include "hosts/session/opened_phone.h"

#include <stdlib.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

#include "hosts/phones/default_phone.h"
#include "hosts/phones/far/ssh_phone.h"
#include "hosts/phones/folder_phone.h"
#include "hosts/session/report_phone.h"
#include "hosts/system/error_text.h"
#include "hosts/system/state_folder.h"
#include "platform/foundation/system_file.h"

namespace hosts {
namespace {

using platform::Problem;
using platform::Result;

Result<std::string> usablePhone(const std::string& named, const Installation& installation) {
    if (!named.empty()) return named;
    auto usual = defaultPhonePath();
    if (!usual) {
        Problem problem = std::move(usual).error();
        problem.reason += "; --phone names another phone";
        return problem;
    }
    const auto made = ensurePhone(*usual, installation.samplePhone());
    return made ? std::move(usual) : Result<std::string>(made.error());
}

bool isDefaultPhone(const std::string& folder) {
    const auto usual = defaultPhonePath();
    std::error_code ignored;
    return usual && std::filesystem::equivalent(folder, *usual, ignored);
}

std::optional<MountMemory> mountMemory() {
    auto folder = stateFolder();
    if (!folder) return std::nullopt;
    return MountMemory(*std::move(folder) + "/mounts");
}

std::string phoneToLookAt(const std::string& named, const Installation& installation) {
    if (!named.empty()) return named;
    const auto usual = defaultPhonePath();
    std::error_code ignored;
    return usual && std::filesystem::is_directory(*usual, ignored) ? *usual : installation.samplePhone();
}

History historyOf(Phone& opened) {
    auto folder = stateFolder();
    if (folder) *folder += "/history";
    return {std::move(folder), opened.identity().place, [&opened] { return opened.mark(); }};
}

OpenedPhone withHistory(Installation installation, std::unique_ptr<Phone> opened, std::unique_ptr<Outcomes> outcomes,
                        const DeviceShape& shape) {
    auto history = std::make_unique<PhoneHistory>(historyOf(*opened), *outcomes);
    return {std::move(installation), std::move(opened), std::move(outcomes), std::move(history), shape};
}

constexpr std::size_t mostReportBytes = std::size_t{64} << 20;

/// A folder for its user alone, with all that is in it; a problem where it cannot be made.
struct PassingFolder {
    PassingFolder() {
        const char* const named = std::getenv("TMPDIR");
        std::string pattern = std::string(named && *named == '/' ? named : "/tmp") + "/trivel3-report-XXXXXX";
        if (::mkdtemp(pattern.data())) path = pattern;
        if (path.empty()) problem = {pattern, "cannot make", errorText(errno)};
    }
    PassingFolder(const PassingFolder&) = delete;
    PassingFolder& operator=(const PassingFolder&) = delete;
    ~PassingFolder() {
        std::error_code ignored;
        if (!path.empty()) std::filesystem::remove_all(path, ignored);
    }

    Result<std::string> asFolder() const { return path.empty() ? Result<std::string>(problem) : Result(path); }

    std::string path;
    Problem problem;
};

// By what the phone, or `teller` in its place, says of itself.
const DeviceShape& shapeByModel(Phone& phone, const char* teller, Outcomes& outcomes, const PhoneOptions& options) {
    if (options.isDeviceNamed) return *options.device;
    const auto model = phone.device().copyAnswer("ProductType");
    const std::string name = model && model->string() ? *model->string() : std::string();
    if (const DeviceShape* shape = shapeOfModel(name)) return *shape;
    outcomes.remark((name.empty() ? std::string(teller) + " names no model" : "the model " + name + " is not known") +
                    ": it is shown as " + std::string(options.device->name) + "; --device names another shape");
    return *options.device;
}

OpenedPhone ofReport(Installation installation, std::unique_ptr<ReportPhone> report, std::unique_ptr<Outcomes> outcomes,
                     const PhoneOptions& options) {
    auto folder = std::make_shared<PassingFolder>();
    History kept(folder->asFolder(), report->identity().place, [] { return std::string(); });
    auto history = std::make_unique<PhoneHistory>(std::move(kept), *outcomes);
    const DeviceShape& shape = shapeByModel(*report, "the report", *outcomes, options);
    OpenedPhone opened{std::move(installation), std::move(report), std::move(outcomes), std::move(history), shape};
    opened.isReport = true;
    opened.passing = std::move(folder);
    return opened;
}

constexpr std::chrono::seconds unremarkedWait{2};

// Says it once.
Waiting::Meanwhile remarkWith(Outcomes& outcomes, const std::string& sentence) {
    return [&outcomes, sentence](std::chrono::milliseconds waited) {
        if (waited > unremarkedWait) outcomes.remark(sentence);
        return true;
    };
}

Result<OpenedPhone> openFar(Installation installation, const PhoneOptions& options, std::string program) {
    const auto address = parseSshAddress(options.phone);
    if (!address) return address.error();
    SshOptions ssh = options.ssh;
    ssh.mayAsk = ::isatty(STDERR_FILENO) == 1;
    auto outcomes = std::make_unique<Outcomes>(std::move(program), options.verbose);
    if (ssh.mayAsk) outcomes->remark("connecting to " + address->text());
    auto phone = SshPhone::open(*address, ssh, installation.sessionBusModule());
    if (!phone) return std::move(phone).error();
    // That it was being connected with is no news any more, for whoever shows remarks later.
    static_cast<void>(outcomes->takeRemarks());
    const auto informed = (*phone)->useDeviceInformation(options.deviceInformation);
    if (!informed) return informed.error();
    const DeviceShape& shape = shapeByModel(**phone, "the phone", *outcomes, options);
    OpenedPhone opened = withHistory(std::move(installation), *std::move(phone), std::move(outcomes), shape);
    opened.phone->tell(&opened.history->recorder, options.verbose);
    opened.waiting = ssh.waiting;
    // Not before: ssh may have been asking something on the same terminal.
    if (ssh.mayAsk && !ssh.waiting->isUsed())
        ssh.waiting->use(remarkWith(*opened.outcomes, "waiting for " + address->text()));
    return opened;
}

}  // namespace

Result<OpenedPhone> OpenedPhone::open(const PhoneOptions& options, std::string program) {
    auto installation = findInstallation();
    if (!installation) return std::move(installation).error();
    if (namesSshAddress(options.phone)) return openFar(*std::move(installation), options, std::move(program));
    const auto folder = usablePhone(options.phone, *installation);
    if (!folder) return folder.error();
    const auto mounts = mountMemory();
    std::error_code ignored;
    if (mounts && options.create) mounts->forget(std::filesystem::canonical(*folder, ignored));
    auto phone = FolderPhone::open(*folder, installation->sessionBusModule(), mounts, options.ssh.notify);
    if (!phone) return std::move(phone).error();
    const auto informed = (*phone)->useDeviceInformation(options.deviceInformation);
    if (!informed) return informed.error();
    auto outcomes = std::make_unique<Outcomes>(std::move(program), options.verbose);
    OpenedPhone opened = withHistory(*std::move(installation), *std::move(phone), std::move(outcomes), *options.device);
    opened.isSample = isDefaultPhone(*folder);
    opened.phone->tell(&opened.history->recorder, options.verbose);
    if (std::filesystem::is_empty(*folder, ignored)) opened.outcomes->remark(*folder + " is empty: it held no phone");
    return opened;
}

Result<OpenedPhone> OpenedPhone::openPhoneOrReport(const PhoneOptions& options, std::string program) {
    if (!namesReport(options.phone)) return open(options, std::move(program));
    auto installation = findInstallation();
    if (!installation) return std::move(installation).error();
    const std::string name = options.phone == "-" ? "standard input" : options.phone;
    errno = 0;
    const auto bytes =
        platform::readSystemFile(options.phone == "-" ? "/dev/stdin" : options.phone, mostReportBytes + 1);
    if (!bytes) return Problem{name, "cannot read", errorText(errno)};
    if (bytes->size() > mostReportBytes) return Problem{name, {}, "holds more than 64 MB, and no more is read"};
    const auto report = readSupportReport(*bytes, installation->mailModule());
    if (!report) return Problem{name, {}, report.error().text()};
    auto phone = openReport(*report, name);
    const auto informed = phone->useDeviceInformation(options.deviceInformation);
    if (!informed) return informed.error();
    auto outcomes = std::make_unique<Outcomes>(std::move(program), options.verbose);
    return ofReport(*std::move(installation), std::move(phone), std::move(outcomes), options);
}

Result<platform::Done> OpenedPhone::forgetTries() {
    if (!isReport) return Problem{.reason = "it is no support report"};
    static_cast<ReportPhone&>(*phone).forgetChanges();
    return history->history.forget();
}

bool OpenedPhone::lacksApplications() const {
    return isReport && static_cast<const ReportPhone&>(*phone).wasAskedForApplications();
}

bool namesReport(const std::string& named) {
    std::error_code ignored;
    return named == "-" || std::filesystem::is_regular_file(named, ignored);
}

Result<OpenedPhone> OpenedPhone::openToLook(const PhoneOptions& options) {
    auto installation = findInstallation();
    if (!installation) return std::move(installation).error();
    if (namesSshAddress(options.phone)) return Problem{options.phone, {}, "it is not connected with to be looked at"};
    auto phone =
        FolderPhone::open(phoneToLookAt(options.phone, *installation), installation->sessionBusModule(), std::nullopt);
    if (!phone) return std::move(phone).error();
    return withHistory(*std::move(installation), *std::move(phone), std::make_unique<Outcomes>("", false),
                       *options.device);
}

std::string nameOf(OpenedPhone& opened) {
    if (opened.isSample) return "Sample Phone";
    for (const char* key : {"UserAssignedDeviceName", "DeviceName"}) {
        const auto answer = opened.phone->device().copyAnswer(key);
        if (answer && answer->string() && !answer->string()->empty()) return *answer->string();
    }
    const PhoneIdentity& identity = opened.phone->identity();
    return identity.name.empty() ? identity.place : identity.name;
}

}  // namespace hosts
