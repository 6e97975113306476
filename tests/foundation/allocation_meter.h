// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

/// Measures what is allocated with `new` between its making and the questions.
class AllocationMeter {
public:
    AllocationMeter();
    std::size_t allocations() const;
    std::size_t peakBytes() const;

private:
    std::size_t _allocationsBefore;
    std::size_t _bytesBefore;
};
