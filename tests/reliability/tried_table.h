// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace reliability_test {

/// Counts what became of writes that met a fault, fault by fault. At its end it adds its lines, as a
/// table, to those for docs/reliability.md.
class TriedTable {
public:
    /// What became of one try.
    struct Outcome {
        bool isNew;  ///< the new file stands, not the old one
        std::size_t lost;
    };

    TriedTable(std::string title, std::string firstColumn)
        : _title(std::move(title)), _firstColumn(std::move(firstColumn)) {}
    TriedTable(const TriedTable&) = delete;
    TriedTable& operator=(const TriedTable&) = delete;
    ~TriedTable();

    void add(const std::string& line, Outcome outcome);
    std::size_t tried() const;
    std::size_t lost() const;

private:
    struct Line {
        std::string name;
        std::size_t tried = 0;
        std::size_t isNew = 0;
        std::size_t lost = 0;
    };

    std::string text() const;

    std::string _title;
    std::string _firstColumn;
    std::vector<Line> _lines;
};

}  // namespace reliability_test
