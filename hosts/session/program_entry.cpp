// SPDX-License-Identifier: MIT
#include "hosts/session/program_entry.h"

#include <errno.h>
#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>

#include "hosts/session/exit_status.h"

namespace hosts {
namespace {

// A program may be started with its standard streams closed. What it opens next must not take their
// place: a message would go into a settings file. Output to such a stream still fails.
void fillStandardDescriptors() {
    int descriptor = -1;
    do {
        descriptor = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    } while (descriptor >= 0 && descriptor <= STDERR_FILENO);
    ::close(descriptor);
}

int failForWantOfMemory() {
    std::fprintf(stderr, "%s: too little memory; end other programs, or raise the limit, and try again\n",
                 program_invocation_short_name);
    return failed;
}

// Where an exception can go no further, as out of a destructor, or there is not even the memory for one. Other reasons
// to end so are faults of the program, which are to be seen as such.
[[noreturn]] void endForException() {
    constexpr std::size_t roomForException = std::size_t{64} << 10;
    if (std::current_exception()) std::_Exit(failForException());
    if (std::malloc(roomForException) == nullptr) std::_Exit(failForWantOfMemory());
    std::abort();
}

// Before libraries that want memory to prepare themselves, as some do before `main`.
struct EndsForException {
    EndsForException() { std::set_terminate(endForException); }
};
[[gnu::init_priority(101)]] const EndsForException endsForException;

int runGuarded(int (*run)(int, char**), int argumentCount, char** arguments) {
    try {
        return run(argumentCount, arguments);
    } catch (...) {
        return failForException();
    }
}

}  // namespace

int failForException() {
    try {
        throw;
    } catch (const std::bad_alloc&) {
        return failForWantOfMemory();
    } catch (const std::exception& problem) {
        return fail(failed, problem.what());
    }
}

int runAsProgram(int (*run)(int, char**), int argumentCount, char** arguments) {
    fillStandardDescriptors();
    std::signal(SIGXFSZ, SIG_IGN);
    const int status = runGuarded(run, argumentCount, arguments);
    // On a full disk, say.
    if (std::fflush(stdout) != 0 || std::ferror(stdout)) return fail(failed, "standard output cannot be written");
    return status;
}

}  // namespace hosts
