// SPDX-License-Identifier: MIT
#pragma once

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <map>
#include <new>
#include <string>
#include <vector>

namespace kit {

/// As exec takes them, with a null pointer at the end; good as long as the texts are.
inline std::vector<char*> pointersTo(const std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (const std::string& text : texts)
        pointers.push_back(const_cast<char*>(text.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

/// As exec takes them: "NAME=VALUE" of each.
inline std::vector<std::string> assignmentsOf(const std::map<std::string, std::string>& variables) {
    std::vector<std::string> assignments;
    for (const auto& [name, value] : variables)
        assignments.push_back(name + "=" + value);
    return assignments;
}

/// Starts `action` in a copy of this process, whose exit status is what it returns.
template <typename Action>
pid_t startForked(Action action) {
    const pid_t child = ::fork();
    if (child == 0) ::_exit(action());
    return child;
}

/// The exit status of the child, or minus the number of the signal that ended it.
inline int waitForChild(pid_t child) {
    int status = 0;
    while (::waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) return -1000;
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

template <typename Action>
int runForked(Action action) {
    return waitForChild(startForked(action));
}

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
