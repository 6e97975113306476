// SPDX-License-Identifier: MIT
#pragma once

#include <sys/mman.h>

#include <atomic>
#include <new>

namespace kit {

/// A number that this process and those that it forks all see.
class SharedCounter {
public:
    SharedCounter()
        : _memory(::mmap(nullptr, sizeof(std::atomic<int>), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0)),
          _counter(new (_memory) std::atomic<int>(0)) {}
    SharedCounter(const SharedCounter&) = delete;
    SharedCounter& operator=(const SharedCounter&) = delete;
    ~SharedCounter() { ::munmap(_memory, sizeof(std::atomic<int>)); }

    std::atomic<int>& operator*() { return *_counter; }

private:
    void* _memory;
    std::atomic<int>* _counter;
};

}  // namespace kit
