// SPDX-License-Identifier: MIT
#include "hosts/session/failure_table.h"

#include <algorithm>
#include <bit>
#include <functional>
#include <iterator>

namespace hosts {
namespace {

constexpr std::size_t mostSettings = 8;
constexpr std::size_t mostBoxes = 10'000;

using Digits = std::vector<std::size_t>;

// Every choice of some values, but for none.
std::size_t allOf(const std::vector<std::int64_t>& values) {
    return (std::size_t{1} << values.size()) - 1;
}

// Counts on, the first digit fastest; false at the end.
bool advance(Digits& digits, std::size_t first, const std::function<std::size_t(std::size_t digit)>& last) {
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (digits[i] < last(i)) {
            ++digits[i];
            return true;
        }
        digits[i] = first;
    }
    return false;
}

bool holds(const Digits& box, const Digits& point) {
    for (std::size_t i = 0; i < box.size(); ++i)
        if ((box[i] >> point[i] & 1) == 0) return false;
    return true;
}

std::size_t volume(const Digits& box) {
    std::size_t points = 1;
    for (const std::size_t values : box)
        points *= static_cast<std::size_t>(std::popcount(values));
    return points;
}

}  // namespace

bool FailureTable::isReadable() const {
    std::size_t boxes = 1;
    for (const auto& [setting, values] : _domains)
        boxes = std::min(mostBoxes + 1, boxes * allOf(values));
    return _domains.size() <= mostSettings && boxes <= mostBoxes;
}

void FailureTable::fill(const std::function<bool(const Point& point)>& hasFailed) {
    Point point(_domains.size(), 0);
    do {
        if (hasFailed(point)) _failing.push_back(point);
    } while (advance(point, 0, [this](std::size_t i) { return _domains[i].second.size() - 1; }));
}

std::vector<FailureTable::Clause> FailureTable::clauses() const {
    std::vector<Clause> all;
    for (const Box& box : cover())
        all.push_back(outsideOf(box));
    return all;
}

std::vector<FailureTable::Point> FailureTable::pointsIn(const Box& box) const {
    std::vector<Point> points;
    std::ranges::copy_if(_failing, std::back_inserter(points), [&](const Point& each) { return holds(box, each); });
    return points;
}

// The boxes that hold nothing but failing points, the largest first.
std::vector<FailureTable::Box> FailureTable::failingBoxes() const {
    std::vector<Box> boxes;
    Box box(_domains.size(), 1);
    do {
        if (pointsIn(box).size() == volume(box)) boxes.push_back(box);
    } while (advance(box, 1, [this](std::size_t i) { return allOf(_domains[i].second); }));
    std::ranges::stable_sort(boxes, std::greater(), volume);
    return boxes;
}

// Few boxes that hold every failing point together, and none without which they would.
std::vector<FailureTable::Box> FailureTable::cover() const {
    std::vector<Box> chosen;
    if (_failing.empty()) return chosen;
    const auto isNeeded = [&](const Box& box) {
        return std::ranges::any_of(pointsIn(box), [&](const Point& point) {
            return std::ranges::none_of(chosen, [&](const Box& each) { return &each != &box && holds(each, point); });
        });
    };
    for (const Box& box : failingBoxes())
        if (isNeeded(box)) chosen.push_back(box);
    for (std::size_t i = chosen.size(); i-- > 0;)
        if (!isNeeded(chosen[i])) chosen.erase(chosen.begin() + static_cast<std::ptrdiff_t>(i));
    return chosen;
}

FailureTable::Clause FailureTable::outsideOf(const Box& box) const {
    Clause clause;
    for (std::size_t i = 0; i < box.size(); ++i) {
        const auto& [setting, values] = _domains[i];
        for (std::size_t value = 0; value < values.size(); ++value)
            if ((box[i] >> value & 1) == 0) clause.emplace_back(setting, values[value]);
    }
    return clause;
}

}  // namespace hosts
