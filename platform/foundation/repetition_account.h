// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <unordered_set>

namespace platform {

/// Keeps account of what a value makes of itself in a format that has no way to refer to an object twice: what is
/// shared is written again wherever it is referred to, and a few hundred bytes can unfold to more than any memory.
/// Whoever writes tells what comes, and gives up when a limit is reached. What is written once counts for nothing, so a
/// file is never too large for itself.
class RepetitionAccount {
public:
    struct Limits {
        std::size_t values;     ///< in containers that have been written already
        std::size_t bytes;      ///< of text and data that is written again
        std::size_t shortText;  ///< text of so few bytes is not kept account of, outside of such containers
    };

    explicit RepetitionAccount(const Limits& limits) : _limits(limits) {}

    /// False when there is too much repetition.
    bool value() { return _repeatedContainers == 0 || ++_repeatedValues <= _limits.values; }

    /// Says that text or data is written that only `sharer` refers to, or others as well.
    template <class Content>
    bool content(const std::shared_ptr<const Content>& sharer) {
        const bool again = _repeatedContainers > 0 || (sharer->size() > _limits.shortText && isRepeated(sharer));
        return !again || repeat(sharer->size());
    }

    bool key(std::string_view text) { return _repeatedContainers == 0 || repeat(text.size()); }

    /// Goes around the members of a container.
    template <class Container>
    void enter(const std::shared_ptr<const Container>& container) {
        if (_repeatedContainers > 0 || isRepeated(container)) ++_repeatedContainers;
    }
    void leave() {
        if (_repeatedContainers > 0) --_repeatedContainers;
    }

private:
    template <class Object>
    bool isRepeated(const std::shared_ptr<const Object>& object) {
        return object.use_count() > 1 && !_written.insert(object.get()).second;
    }
    bool repeat(std::size_t bytes) { return (_repeatedBytes += bytes) <= _limits.bytes; }

    Limits _limits;
    std::unordered_set<const void*> _written;
    std::size_t _repeatedContainers = 0;  ///< around the place, from the outermost repeated one on
    std::size_t _repeatedValues = 0;
    std::size_t _repeatedBytes = 0;
};

}  // namespace platform
