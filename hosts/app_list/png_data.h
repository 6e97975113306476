// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "hosts/app_list/png_file.h"

namespace hosts {

/// The length in bytes of a picture's rows, each with its filter byte, when they are unpacked. Too
/// much, if anything, for a colour type or a bit depth that there is not.
std::size_t unpackedSize(const PngHeader& header);

/// Gives compressed data the zlib wrapper that it lacks. Nothing when it is damaged, or unpacks to
/// more than `mostUnpacked` bytes.
std::optional<std::string> wrapRawData(std::string_view raw, std::size_t mostUnpacked);

}  // namespace hosts
