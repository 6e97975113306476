// SPDX-License-Identifier: MIT
#pragma once

#include <random>

#include "platform/foundation/value.h"

/// Values of every kind, nested a few levels deep; the same seed gives the same values.
class RandomValues {
public:
    enum class Kinds { all, thoseOfXml };

    RandomValues(unsigned seed, Kinds kinds) : _random(seed), _kinds(kinds) {}

    platform::Value next() { return value(4); }

private:
    std::size_t below(std::size_t bound) { return std::uniform_int_distribution<std::size_t>(0, bound - 1)(_random); }
    platform::Value value(int depth);
    platform::Value scalar();
    platform::Value container(int depth);
    platform::Integer integer();
    double real();
    std::string text();
    platform::Data data();
    platform::Array members(int depth);
    platform::Dictionary dictionary(int depth);

    std::mt19937 _random;
    Kinds _kinds;
};
