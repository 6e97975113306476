// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <utility>
#include <variant>

#include "platform/foundation/export.h"

namespace platform {

/// What went wrong. Each part is a clause without a full stop and may hold any bytes, since paths and reasons
/// come from phones too: whoever shows one makes it printable first.
struct TRIVEL3_PLATFORM_EXPORT Problem {
    std::string path = {};    ///< the file that it happened to, as the one who is told knows it; empty for none
    std::string step = {};    ///< what was being done: "cannot read"; empty where the reason says it all
    std::string reason = {};  ///< why that did not work

    /// Whether it may be over by the next try, with nothing done about it: a connection that broke, too little memory.
    /// What could not be read for such a reason may hold anything.
    bool isPassing = false;

    /// "STEP PATH: REASON", without the parts that are empty.
    std::string text() const;

    bool operator==(const Problem&) const = default;
};

/// A value, or why there is none. Named as std::expected is, which is to take its place one day.
template <class T>
class [[nodiscard]] Result {
public:
    Result(T value) : _content(std::in_place_index<0>, std::move(value)) {}
    Result(Problem problem) : _content(std::in_place_index<1>, std::move(problem)) {}

    bool has_value() const { return _content.index() == 0; }
    explicit operator bool() const { return has_value(); }

    /// The value; there must be one.
    T& operator*() & { return *std::get_if<0>(&_content); }
    const T& operator*() const& { return *std::get_if<0>(&_content); }
    T&& operator*() && { return std::move(*std::get_if<0>(&_content)); }
    T* operator->() { return std::get_if<0>(&_content); }
    const T* operator->() const { return std::get_if<0>(&_content); }
    T value_or(T otherwise) && { return has_value() ? std::move(**this) : std::move(otherwise); }

    /// The problem; there must be no value.
    const Problem& error() const& { return *std::get_if<1>(&_content); }
    Problem&& error() && { return std::move(*std::get_if<1>(&_content)); }

private:
    std::variant<T, Problem> _content;
};

/// For what gives nothing when it works.
struct Done {
    bool operator==(const Done&) const = default;
};

}  // namespace platform
