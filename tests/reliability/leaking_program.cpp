// SPDX-License-Identifier: MIT
// Loses some memory and ends well, as far as it knows.
#include <cstddef>

int main() {
    for (std::size_t size = 100; size < 110; ++size) {
        char* volatile lost = new char[size];
        lost = nullptr;
    }
    return 0;
}
