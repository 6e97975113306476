// SPDX-License-Identifier: MIT
// Loses some memory and ends well, as far as it knows.
#include <cstddef>

namespace {

char* volatile lastAllocated = nullptr;

}  // namespace

int main() {
    for (std::size_t size = 100; size < 110; ++size)
        lastAllocated = new char[size];
    lastAllocated = nullptr;
    return lastAllocated == nullptr ? 0 : 1;
}
