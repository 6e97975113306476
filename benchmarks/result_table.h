// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string>
#include <vector>

namespace benchmarks {

/// The one table that the program prints, as Markdown.
class ResultTable {
public:
    /// Job, ours, peer, the peer's figure, ratio, reach, holds.
    using Row = std::array<std::string, 7>;

    void add(Row row) { _rows.push_back(std::move(row)); }
    std::string text() const;

private:
    std::vector<Row> _rows;
};

/// With three or more digits: "4010 ns", "17.8 us", "1.35 ms", "275.0 ms".
std::string timeText(double nanoseconds);
/// "600 KB", "151.0 MB".
std::string sizeText(double bytes);

}  // namespace benchmarks
