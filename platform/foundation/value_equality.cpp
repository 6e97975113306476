// SPDX-License-Identifier: MIT
#include <algorithm>
#include <bit>
#include <unordered_map>

#include "platform/foundation/value.h"

namespace platform {

namespace {

/// Compares two values in depth. Any difference ends the whole comparison, so two containers whose
/// comparison has begun may be taken for equal wherever they meet again: either they are, or the
/// answer is "different" anyway. Containers taken for equal are joined into classes, and joining
/// classes cannot happen more often than there are containers. That keeps the work in proportion
/// to the distinct containers even where shared ones would unfold to an enormous tree.
class Comparison {
public:
    bool equal(const Value& left, const Value& right) {
        return std::visit(
            [&](const auto& content) {
                using Kind = std::decay_t<decltype(content)>;
                const auto* other = std::get_if<Kind>(&right.storage());
                return other && equalContent(content, *other);
            },
            left.storage());
    }

private:
    template <class Scalar>
    bool equalContent(const Scalar& left, const Scalar& right) {
        return left == right;
    }

    bool equalContent(double left, double right) {
        return std::bit_cast<std::uint64_t>(left) == std::bit_cast<std::uint64_t>(right);
    }

    bool equalContent(const Date& left, const Date& right) {
        return equalContent(left.secondsSince2001, right.secondsSince2001);
    }

    template <class Object>
    bool equalContent(const std::shared_ptr<const Object>& left, const std::shared_ptr<const Object>& right) {
        if (left == right) return true;
        if (!left || !right) return false;
        const bool canMeetAgain = left.use_count() > 1 || right.use_count() > 1;
        if (canMeetAgain && !join(left.get(), right.get())) return true;
        return equalObjects(*left, *right);
    }

    bool equalObjects(const std::string& left, const std::string& right) { return left == right; }
    bool equalObjects(const Data& left, const Data& right) { return left == right; }

    bool equalObjects(const Array& left, const Array& right) {
        return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                          [this](const Value& mine, const Value& other) { return equal(mine, other); });
    }

    bool equalObjects(const Set& left, const Set& right) { return equalObjects(left.members, right.members); }

    bool equalObjects(const Dictionary& left, const Dictionary& right) {
        const auto equalEntries = [this](const Dictionary::Entry& mine, const Dictionary::Entry& other) {
            return mine.key == other.key && equal(mine.value, other.value);
        };
        const auto equalOddEntries = [this](const auto& mine, const auto& other) {
            return equal(mine.first, other.first) && equal(mine.second, other.second);
        };
        const auto& leftOdd = left.oddEntries();
        const auto& rightOdd = right.oddEntries();
        return std::equal(left.begin(), left.end(), right.begin(), right.end(), equalEntries) &&
               std::equal(leftOdd.begin(), leftOdd.end(), rightOdd.begin(), rightOdd.end(), equalOddEntries);
    }

    /// False when both were in one class already.
    bool join(const void* left, const void* right) {
        const void* leftClass = classOf(left);
        const void* rightClass = classOf(right);
        if (leftClass == rightClass) return false;
        _parents[leftClass] = rightClass;
        return true;
    }

    const void* classOf(const void* object) {
        auto place = _parents.try_emplace(object, object).first;
        while (place->second != place->first) {
            auto parent = _parents.find(place->second);
            place->second = parent->second;
            place = parent;
        }
        return place->first;
    }

    std::unordered_map<const void*, const void*> _parents;
};

}  // namespace

bool Value::operator==(const Value& other) const {
    return Comparison().equal(*this, other);
}

}  // namespace platform
