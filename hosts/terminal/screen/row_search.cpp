// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/row_search.h"

#include <algorithm>
#include <cstdlib>
#include <cwctype>
#include <iterator>
#include <string>
#include <vector>

#include "hosts/session/row_finder.h"

namespace hosts::terminal::screen {
namespace {

// Text that is none in the user's encoding is compared byte by byte.
std::wstring inSmallLetters(const std::string& text) {
    std::wstring small(text.size(), L'\0');
    const std::size_t length = std::mbstowcs(small.data(), text.c_str(), small.size());
    if (length == static_cast<std::size_t>(-1)) {
        std::ranges::transform(text, small.begin(), [](char byte) { return static_cast<unsigned char>(byte); });
    } else {
        small.resize(length);
    }
    std::ranges::transform(small, small.begin(), [](wchar_t letter) {
        return static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(letter)));
    });
    return small;
}

}  // namespace

std::optional<platform::NSIndexPath> searchRow(platform::UIViewController& page, std::string_view text,
                                               platform::NSIndexPath start, SearchFrom from) {
    const std::vector<RowPlace> rows = rowPlaces(page);
    if (rows.empty() || text.empty()) return std::nullopt;
    const std::wstring wanted = inSmallLetters(std::string(text));
    const auto found = std::ranges::find(rows, start, &RowPlace::path);
    const std::size_t count = rows.size();
    const auto origin = static_cast<std::size_t>(std::distance(rows.begin(), found)) % count;
    for (std::size_t step = from == SearchFrom::here ? 0 : 1; step <= count; ++step) {
        const RowPlace& row = rows[(from == SearchFrom::before ? origin + count - step : origin + step) % count];
        if (inSmallLetters(row.label).find(wanted) != std::wstring::npos) return row.path;
    }
    return std::nullopt;
}

}  // namespace hosts::terminal::screen
