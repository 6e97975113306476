// SPDX-License-Identifier: MIT
#include "foreign_reader.h"

#include <array>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>

#include "tests/kit/temporary_folder.h"

namespace foreign {
namespace {

struct ClosePipe {
    void operator()(std::FILE* pipe) const { ::pclose(pipe); }
};

/// The shell only ever sees words of this file and names of temporary files.
std::string outputOf(const std::string& command) {
    const std::unique_ptr<std::FILE, ClosePipe> pipe(::popen((command + " 2>&1").c_str(), "re"));
    std::string output;
    std::array<char, 65536> block;
    while (const std::size_t got = std::fread(block.data(), 1, block.size(), pipe.get()))
        output.append(block.data(), got);
    return output;
}

void save(const std::filesystem::path& file, std::string_view bytes) {
    std::ofstream stream(file, std::ios::binary);
    stream << bytes;
}

std::string load(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace

std::string jsonByPlistlib(std::string_view bytes) {
    constexpr auto program =
        "import json, plistlib, sys; "
        "print(json.dumps(plistlib.load(open(sys.argv[1], \"rb\"), fmt=plistlib.FMT_BINARY), sort_keys=True), "
        "end=\"\")";
    const kit::TemporaryFolder folder;
    const auto file = folder.path() / "report.plist";
    save(file, bytes);
    return outputOf(std::string(TEST_PYTHON) + " -I -c '" + program + "' " + file.string());
}

std::string convertedByPlistutil(std::string_view bytes, const std::string& format) {
    const kit::TemporaryFolder folder;
    const auto input = folder.path() / "report.plist";
    const auto output = folder.path() / "converted";
    save(input, bytes);
    outputOf(std::string(TEST_PLISTUTIL) + " -i " + input.string() + " -f " + format + " -o " + output.string());
    return load(output);
}

bool plistutilKnowsNull() {
    constexpr auto program =
        "import plistlib, sys; plistlib.dump({\"nothing\": None}, open(sys.argv[1], \"wb\"), fmt=plistlib.FMT_BINARY)";
    const kit::TemporaryFolder folder;
    const auto file = folder.path() / "null.plist";
    outputOf(std::string(TEST_PYTHON) + " -I -c '" + program + "' " + file.string());
    return convertedByPlistutil(load(file), "json").find("null") != std::string::npos;
}

}  // namespace foreign
