// SPDX-License-Identifier: MIT
#include "hosts/session/skip_lines.h"

#include <unistd.h>

#include <cstdio>
#include <functional>

#include "hosts/session/printable.h"

namespace hosts {
namespace {

// More than anybody reads on a terminal.
constexpr std::size_t mostHeld = 1000;

void say(const std::string& line) {
    std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace

void SkipLines::skipped(std::string_view path, std::string_view reason) {
    std::string line = _program + ": skipped " + printable(path) + ": " + printable(reason) + "\n";
    if (!_hashes.insert(std::hash<std::string>()(line)).second) return;
    if (!_areHeld) {
        say(line);
    } else if (_held.size() < mostHeld) {
        _held.push_back(std::move(line));
    } else {
        ++_leftOut;
    }
}

SkipLines::Hold::Hold(SkipLines& lines) : _lines(lines) {
    _lines._areHeld = ::isatty(STDERR_FILENO) == 1;
}

SkipLines::Hold::~Hold() {
    for (const std::string& line : _lines._held)
        say(line);
    if (_lines._leftOut > 0) {
        say(_lines._program + ": skipped " + std::to_string(_lines._leftOut) +
            " more; standard error that goes into a file has them all\n");
    }
    _lines._areHeld = false;
    _lines._held.clear();
    _lines._leftOut = 0;
}

}  // namespace hosts
