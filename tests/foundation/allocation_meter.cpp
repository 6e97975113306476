// SPDX-License-Identifier: MIT
#include "allocation_meter.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <new>

namespace {

std::size_t allocationCount = 0;
std::size_t bytesInUse = 0;
std::size_t greatestBytesInUse = 0;

void noteAllocation(std::size_t size) {
    ++allocationCount;
    bytesInUse += size;
    greatestBytesInUse = std::max(greatestBytesInUse, bytesInUse);
}

}  // namespace

void* operator new(std::size_t size) {
    void* memory = std::malloc(size == 0 ? 1 : size);
    if (!memory) throw std::bad_alloc();
    noteAllocation(malloc_usable_size(memory));
    return memory;
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return operator new(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void operator delete(void* memory) noexcept {
    if (memory) bytesInUse -= malloc_usable_size(memory);
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}

AllocationMeter::AllocationMeter() : _allocationsBefore(allocationCount), _bytesBefore(bytesInUse) {
    greatestBytesInUse = bytesInUse;
}

std::size_t AllocationMeter::allocations() const {
    return allocationCount - _allocationsBefore;
}

std::size_t AllocationMeter::peakBytes() const {
    return greatestBytesInUse - _bytesBefore;
}
