// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

#include "hosts/system/descriptor.h"
#include "platform/foundation/result.h"

namespace hosts {

/// Makes the folder and those above it that are missing, for their user alone (0700), as the rules
/// for the user's folders ask. Folders that are there stay as they are. False, with `failure` set,
/// when there is no such folder afterwards.
bool makePrivateFolders(const std::filesystem::path& folder, std::error_code& failure);

/// A file of this machine that nobody had before, for the user's eyes only (0600). It goes with this
/// object unless it has been kept.
class NewFile {
public:
    /// Makes STEM + EXTENSION in the folder or, where that is taken, "STEM (2)EXTENSION" and so on;
    /// the folder too, and those above it, where they are missing.
    static platform::Result<NewFile> create(const std::string& folder, const std::string& stem,
                                            const std::string& extension);
    NewFile(NewFile&& other) noexcept = default;
    NewFile& operator=(NewFile&&) = delete;
    ~NewFile();

    const std::string& path() const { return _path; }
    int descriptor() const { return _file.get(); }

    platform::Result<platform::Done> write(std::string_view contents);
    /// Makes the content durable and lets the file stay.
    platform::Result<platform::Done> keep();

private:
    NewFile(Descriptor file, std::string path) : _file(std::move(file)), _path(std::move(path)) {}

    Descriptor _file;
    std::string _path;
};

/// The text made fit to name a file: without slashes and control characters, not hidden, and short
/// enough to leave room for a number and an extension. `otherwise` where nothing is left of it.
std::string fileNameFrom(std::string_view text, std::string_view otherwise);

}  // namespace hosts
