// SPDX-License-Identifier: MIT
// sandbox ERRNO PROGRAM [ARGUMENT…]: runs a program that the kernel refuses openat2 with that error. Status 125 when it
// cannot be done.
#include <unistd.h>

#include <cstdlib>

#include "tests/kit/refused_openat2.h"

int main(int count, char** arguments) {
    constexpr int failed = 125;
    if (count < 3 || !kit::refuseOpenat2(std::atoi(arguments[1]))) return failed;
    ::execv(arguments[2], arguments + 2);
    return failed;
}
