// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "hosts/system/descriptor.h"

namespace hosts {

/// A file of this machine that nobody had before, for the user's eyes only (0600). It goes with this
/// object unless it has been kept. Operations that fail leave one line in `error`.
class NewFile {
public:
    /// Makes STEM + EXTENSION in the folder or, where that is taken, "STEM (2)EXTENSION" and so on;
    /// the folder too, and those above it, where they are missing.
    static std::optional<NewFile> create(const std::string& folder, const std::string& stem,
                                         const std::string& extension, std::string& error);
    NewFile(NewFile&& other) noexcept = default;
    NewFile& operator=(NewFile&&) = delete;
    ~NewFile();

    const std::string& path() const { return _path; }
    int descriptor() const { return _file.get(); }

    bool write(std::string_view contents, std::string& error);
    /// Makes the content durable and lets the file stay.
    bool keep(std::string& error);

private:
    NewFile(Descriptor file, std::string path) : _file(std::move(file)), _path(std::move(path)) {}

    Descriptor _file;
    std::string _path;
};

/// The text made fit to name a file: without slashes and control characters, not hidden, and short
/// enough to leave room for a number and an extension. `otherwise` where nothing is left of it.
std::string fileNameFrom(std::string_view text, std::string_view otherwise);

}  // namespace hosts
