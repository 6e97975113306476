// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/property_list.h"

namespace platform::property_list {

enum class Encoding { utf8, latin1, windows1252, utf16LittleEndian, utf16BigEndian, utf32LittleEndian, utf32BigEndian };

/// An XML file as UTF-8, whatever its encoding: a view of the file's own bytes where they are UTF-8
/// (not validated), else a copy. Refers to the bytes it was made from.
class XmlText {
public:
    /// Nothing when the encoding is unknown or the bytes do not keep to it; then `fault` says why.
    static std::optional<XmlText> decode(std::string_view bytes, PropertyListError& fault);

    std::string_view utf8() const { return _own ? std::string_view(*_own) : _view; }

    /// Which byte of the file the byte of `utf8()` comes from. Takes time in proportion to it.
    std::size_t fileOffset(std::size_t utf8Offset) const;

private:
    std::string_view _view;           ///< the file behind its byte-order mark
    std::optional<std::string> _own;  ///< unless the file is UTF-8
    Encoding _encoding = Encoding::utf8;
    std::size_t _markLength = 0;
};

}  // namespace platform::property_list
