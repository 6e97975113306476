// SPDX-License-Identifier: MIT
#include "tests/kit/document_tables.h"

#include <cstdlib>
#include <fstream>

namespace kit {

void addToTables(const std::string& text) {
    if (const char* file = std::getenv("TRIVEL3_TABLES")) std::ofstream(file, std::ios::app) << text;
}

std::optional<int> changesAsked() {
    const char* const asked = std::getenv("TRIVEL3_CHANGES");
    return asked ? std::optional(std::atoi(asked)) : std::nullopt;
}

}  // namespace kit
