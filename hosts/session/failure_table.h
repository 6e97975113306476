// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

namespace hosts {

/// When something fails, by the settings that it depends on: a truth table, and the conditions that can be read off it.
/// Settings go by numbers.
class FailureTable {
public:
    /// The settings, each with the values that it can hold.
    using Domains = std::vector<std::pair<std::size_t, std::vector<std::int64_t>>>;
    /// For each setting the place of one of its values.
    using Point = std::vector<std::size_t>;
    /// Settings with values, in the order of the settings: one of them is to hold.
    using Clause = std::vector<std::pair<std::size_t, std::int64_t>>;

    explicit FailureTable(Domains domains) : _domains(std::move(domains)) {}

    /// Whether the settings are few enough for conditions that anybody would read: eight at most.
    bool isReadable() const;

    /// Asks of each point whether it fails there.
    void fill(const std::function<bool(const Point& point)>& hasFailed);

    /// What is to hold lest it fails: each of these. Each is as short as can be, and none follows from the others.
    std::vector<Clause> clauses() const;

private:
    /// For each setting some of its values, a bit each.
    using Box = std::vector<std::size_t>;

    std::vector<Point> pointsIn(const Box& box) const;
    std::vector<Box> failingBoxes() const;
    std::vector<Box> cover() const;
    Clause outsideOf(const Box& box) const;

    Domains _domains;
    std::vector<Point> _failing;
};

}  // namespace hosts
