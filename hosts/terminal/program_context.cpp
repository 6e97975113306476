// SPDX-License-Identifier: MIT
#include "hosts/terminal/program_context.h"

#include "hosts/session/opened_phone.h"

namespace hosts::terminal {

std::optional<ProgramContext> ProgramContext::open(const PhoneOptions& options, std::string& error) {
    auto phone = openPhone(options.phone, error);
    if (!phone) return std::nullopt;
    auto skips = options.verbose ? std::make_unique<SkipLines>("trivel3ctl") : nullptr;
    phone->files.tell(skips.get());
    return ProgramContext{std::move(phone->installation), std::move(phone->folder),
                          std::move(phone->files),        *options.device,
                          options.deviceInformation,      std::move(skips)};
}

}  // namespace hosts::terminal
