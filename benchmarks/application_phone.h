// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "benchmarks/application_peers.h"
#include "benchmarks/bench_phone.h"
#include "benchmarks/temporary_folder.h"
#include "platform/foundation/value.h"

namespace benchmarks {

/// A page of applications, and where its ticks are.
struct TickPage {
    const char* name;
    const char* className;
    std::string_view file;
    const char* outerKey;
    std::size_t firstApplicationSection;
    /// What the file holds with this many ticks.
    platform::Dictionary (*content)(std::size_t ticks);

    /// The second section of applications is the user's.
    std::size_t userSection() const { return firstApplicationSection + 1; }
    TickPlace placeOn(const std::string& phone) const { return {phone + std::string(file), outerKey}; }
};

extern const TickPage closeAllAppsPage;
extern const TickPage exceptionsPage;

/// A program that has just been started on a phone, and has loaded the app-list service.
std::unique_ptr<BenchPhone> startOn(const std::string& phone, Durability durability);

/// A phone with this many sample applications, and as many ticks for each of the two pages.
class ApplicationPhone {
public:
    ApplicationPhone(std::size_t applications, Durability durability);

    const std::string& folder() const { return _folder.path(); }
    std::unique_ptr<BenchPhone> start() const { return startOn(folder(), _durability); }
    /// A program whose app-list service has found the applications before.
    BenchPhone& running();

    /// Phones that are made when they are first asked for, and last until the program ends.
    static ApplicationPhone& shared(std::size_t applications, Durability durability = Durability::inMemory);

private:
    TemporaryFolder _folder;
    Durability _durability;
    std::unique_ptr<BenchPhone> _running;
};

}  // namespace benchmarks
