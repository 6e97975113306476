// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <random>
#include <string>

#include "tests/kit/phone.h"
#include "tests/kit/trivel3ctl.h"

namespace reliability_test {

using namespace kit;

/// `trivel3ctl drive` under a finger that does anything at random, while another program changes the
/// phone's files. The phone is the sample phone.
class Soak {
public:
    /// What the program has of the machine.
    struct Footprint {
        std::size_t memory;  ///< resident, in bytes
        std::size_t threads;
        std::size_t openFiles;
    };

    /// `environment` is set for the program besides what it usually has.
    explicit Soak(unsigned long seed, const std::map<std::string, std::string>& environment = {});

    /// Throws std::runtime_error, with the command in its text, when an answer is not what it must be.
    void run(unsigned long steps);
    Footprint footprint() const;
    Outcome finish() { return _program.finish(); }

private:
    void step();
    json chooseCommand();
    json randomRow();
    json randomComposerResult();
    void changeFilesFromOutside();
    std::string randomSettings();
    void toggleApplication();
    void takeAnswer(const json& command, const std::string& line);
    void takeEvent(const json& event);

    std::size_t pick(std::size_t count) { return std::uniform_int_distribution<std::size_t>(0, count - 1)(_random); }
    bool oneIn(std::size_t count) { return pick(count) == 0; }

    std::mt19937_64 _random;
    Trivel3ctl _ctl;
    Phone _phone;
    RunningTrivel3ctl _program;
    json _page;
    std::size_t _presented = 0;
};

}  // namespace reliability_test
