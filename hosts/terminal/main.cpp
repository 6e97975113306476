// SPDX-License-Identifier: MIT
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <exception>

#include "hosts/session/exit_status.h"
#include "hosts/terminal/command_line.h"

namespace {

using namespace hosts;

// A program may be started with its standard streams closed. What it opens next must not take their
// place: a message would go into a settings file. Output to such a stream still fails.
void fillStandardDescriptors() {
    int descriptor = -1;
    do {
        descriptor = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    } while (descriptor >= 0 && descriptor <= STDERR_FILENO);
    ::close(descriptor);
}

int runProgram(int argumentCount, char** arguments) {
    try {
        return terminal::runCommandLine(argumentCount, arguments);
    } catch (const std::exception& problem) {
        return fail(failed, problem.what());
    }
}

}  // namespace

int main(int argumentCount, char** arguments) {
    fillStandardDescriptors();
    const int status = runProgram(argumentCount, arguments);
    // Output that could not be written, on a full disk say, is a failure too.
    if (std::fflush(stdout) != 0 || std::ferror(stdout)) {
        return hosts::fail(hosts::failed, "standard output cannot be written");
    }
    return status;
}
