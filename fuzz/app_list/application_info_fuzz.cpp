// SPDX-License-Identifier: MIT
// Any bytes at all as an application's Info.plist and as its English names.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/app_list/application_icon.h"
#include "platform/foundation/utf8.h"

namespace {

/// A phone on which every file holds the same.
class UniformPhone final : public platform::FileSystem {
public:
    explicit UniformPhone(std::string_view content) : _content(content) {}

    platform::Result<platform::Stamp> look(std::string_view) const override {
        return platform::Stamp{.size = _content.size(), .isSettled = true};
    }
    platform::Result<platform::Stamp> readFile(std::string_view path, std::string& contents,
                                               std::size_t limit) const override {
        contents = _content.size() <= limit ? _content : std::string_view();
        if (_content.size() > limit) return platform::Problem{};
        return look(path);
    }
    platform::Result<std::vector<std::string>> listFolder(std::string_view) const override {
        return std::vector<std::string>();
    }
    platform::Result<platform::Stamp> changeFile(std::string_view, const platform::Change&) override { std::abort(); }

private:
    std::string_view _content;
};

bool isOneLine(std::string_view name) {
    return platform::isValidUtf8(name) && name.size() <= hosts::longestName &&
           name.find_first_of("\n\r\t\x1B\x7F") == name.npos;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const UniformPhone phone({reinterpret_cast<const char*>(data), size});
    hosts::RationedFiles files(phone, {10, 10, 10 * size + 1});
    const auto application = hosts::readApplication(files, "/Applications/Folder.app");
    if (!application) return 0;
    if (application->identifier.empty() || application->displayName.empty()) std::abort();
    if (!isOneLine(application->displayName)) std::abort();
    for (const std::string& name : hosts::readIconNames(files, "/Applications/Folder.app", {})) {
        if (name.empty() || name.find('/') != name.npos || name.find("..") != name.npos) std::abort();
        if (hosts::iconFileNames(name, 2, {}).size() != 9) std::abort();
    }
    return 0;
}
