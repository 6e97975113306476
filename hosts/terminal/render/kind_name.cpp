// SPDX-License-Identifier: MIT
#include "hosts/terminal/render/kind_name.h"

namespace hosts::terminal {

using Kind = platform::PreferenceAccess::Kind;

const char* kindName(Kind kind) {
    switch (kind) {
        case Kind::boolean:
            return "boolean";
        case Kind::integer:
            return "integer";
        case Kind::dictionary:
            break;
    }
    return "dictionary";
}

bool isOfKind(const platform::Value& value, Kind kind) {
    switch (kind) {
        case Kind::boolean:
            return value.boolean() != nullptr;
        case Kind::integer:
            return value.integer() != nullptr;
        case Kind::dictionary:
            break;
    }
    return value.dictionary() != nullptr;
}

}  // namespace hosts::terminal
