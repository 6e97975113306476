// SPDX-License-Identifier: MIT
#include "platform/foundation/property_list.h"

namespace platform {
namespace {

using Verdict = PropertyListNestedLookup::Verdict;

PropertyListNestedLookup lookUpInside(const Value& outer, std::string_view innerKey) {
    if (!outer.dictionary()) return {Verdict::outerNoDictionary, {}};
    const Value* inner = outer.dictionary()->find(innerKey);
    if (!inner) return {Verdict::innerAbsent, {}};
    return {Verdict::found, *inner};
}

}  // namespace

PropertyListNestedLookup lookUpNestedKey(std::string_view bytes, std::string_view outerKey, std::string_view innerKey) {
    const PropertyListLookup outer = lookUpRootKey(bytes, outerKey);
    switch (outer.verdict) {
        case PropertyListLookup::Verdict::malformed:
            return {Verdict::malformed, {}};
        case PropertyListLookup::Verdict::noDictionary:
            return {Verdict::noDictionary, {}};
        case PropertyListLookup::Verdict::absent:
            return {Verdict::outerAbsent, {}};
        case PropertyListLookup::Verdict::found:
            break;
    }
    return lookUpInside(*outer.value, innerKey);
}

}  // namespace platform
