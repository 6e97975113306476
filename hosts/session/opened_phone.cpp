// SPDX-License-Identifier: MIT
#include "hosts/session/opened_phone.h"

#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

#include "hosts/phones/default_phone.h"
#include "hosts/phones/folder_phone.h"
#include "hosts/system/state_folder.h"

namespace hosts {
namespace {

using platform::Result;

Result<std::string> usablePhone(const std::string& named, const Installation& installation) {
    if (!named.empty()) return named;
    auto usual = defaultPhonePath();
    if (!usual) return usual;
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
                        const PhoneOptions& options) {
    auto history = std::make_unique<PhoneHistory>(historyOf(*opened), *outcomes);
    return {std::move(installation), std::move(opened), std::move(outcomes), std::move(history), *options.device};
}

}  // namespace

Result<OpenedPhone> OpenedPhone::open(const PhoneOptions& options, std::string program) {
    auto installation = findInstallation();
    if (!installation) return std::move(installation).error();
    const auto folder = usablePhone(options.phone, *installation);
    if (!folder) return folder.error();
    const auto mounts = mountMemory();
    std::error_code ignored;
    if (mounts && options.create) mounts->forget(std::filesystem::canonical(*folder, ignored));
    auto phone = FolderPhone::open(*folder, installation->sessionBusModule(), mounts);
    if (!phone) return std::move(phone).error();
    const auto informed = (*phone)->useDeviceInformation(options.deviceInformation);
    if (!informed) return informed.error();
    auto outcomes = std::make_unique<Outcomes>(std::move(program), options.verbose);
    OpenedPhone opened = withHistory(*std::move(installation), *std::move(phone), std::move(outcomes), options);
    opened.isSample = isDefaultPhone(*folder);
    opened.phone->tell(&opened.history->recorder, options.verbose);
    if (std::filesystem::is_empty(*folder, ignored)) opened.outcomes->remark(*folder + " is empty: it held no phone");
    return opened;
}

Result<OpenedPhone> OpenedPhone::openToLook(const PhoneOptions& options) {
    auto installation = findInstallation();
    if (!installation) return std::move(installation).error();
    auto phone =
        FolderPhone::open(phoneToLookAt(options.phone, *installation), installation->sessionBusModule(), std::nullopt);
    if (!phone) return std::move(phone).error();
    return withHistory(*std::move(installation), *std::move(phone), std::make_unique<Outcomes>("", false), options);
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
