// SPDX-License-Identifier: MIT
#include "hosts/session/opened_phone.h"

#include "hosts/phones/default_phone.h"

namespace hosts {
namespace {

std::optional<std::string> usablePhone(const std::string& named, const Installation& installation, std::string& error) {
    if (!named.empty()) return named;
    auto usual = defaultPhonePath(error);
    if (!usual || !ensurePhone(*usual, installation.samplePhone(), error)) return std::nullopt;
    return usual;
}

}  // namespace

std::optional<OpenedPhone> openPhone(const std::string& named, std::string& error) {
    auto installation = findInstallation(error);
    if (!installation) return std::nullopt;
    auto folder = usablePhone(named, *installation, error);
    if (!folder) return std::nullopt;
    auto files = PhoneFileSystem::open(*folder, error);
    if (!files) return std::nullopt;
    return OpenedPhone{*std::move(installation), *std::move(folder), InspectedPhone{*std::move(files)}};
}

}  // namespace hosts
