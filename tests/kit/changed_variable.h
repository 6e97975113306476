// SPDX-License-Identifier: MIT
#pragma once

#include <stdlib.h>

#include <optional>
#include <string>

namespace kit {

/// A variable of this process's environment that has another value, or none for null, while this lives.
class ChangedVariable {
public:
    ChangedVariable(const char* name, const char* value) : _name(name) {
        if (const char* before = ::getenv(name)) _before = before;
        value == nullptr ? ::unsetenv(name) : ::setenv(name, value, 1);
    }
    ChangedVariable(const ChangedVariable&) = delete;
    ChangedVariable& operator=(const ChangedVariable&) = delete;
    ~ChangedVariable() { _before ? ::setenv(_name, _before->c_str(), 1) : ::unsetenv(_name); }

private:
    const char* _name;
    std::optional<std::string> _before;
};

}  // namespace kit
