// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace kit {

/// Something that a page has done to the world outside it. Made by the functions of `namespace
/// event`, which name what matters for each kind.
struct Event {
    enum class Kind {
        write,
        notification,
        reloadTable,
        reload,
        insert,
        remove,
        push,
        pop,
        openUrl,
        canOpenUrl,
        present,
        dismiss,
    };

    Kind kind;
    /// A path, a name, a URL, a class, or the rows' labels ("" for a group row without a title).
    std::vector<std::string> subjects = {};
    /// Flat position on the page, group rows counted.
    std::optional<std::size_t> position = {};
    /// Whether a write worked, a change was animated, a URL has a program.
    std::optional<bool> flag = {};

    bool operator==(const Event&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Event& event);

/// How a change of what is shown was made.
inline constexpr bool withAnimation = true;
inline constexpr bool atOnce = false;

namespace event {

Event write(std::string path, bool worked = true);
Event notification(std::string name);
/// The whole table of a page of this class.
Event reloadTable(std::string className);
Event reload(std::string label, std::size_t position, bool animated);
Event insert(std::vector<std::string> labels, std::size_t position, bool animated);
/// The position is that before the removal.
Event remove(std::vector<std::string> labels, std::size_t position, bool animated);
/// The class is that of the page that comes into view.
Event push(std::string className, bool animated = withAnimation);
Event pop(std::string className, bool animated = withAnimation);
Event openUrl(std::string url, bool worked);
Event canOpenUrl(std::string url, bool answer);
/// "nothing" stands for a page that had no controller to present.
Event present(std::string className, bool animated);
Event dismiss(bool animated);

}  // namespace event

/// What has happened, in order.
class EventLog {
public:
    void add(Event event) { _events.push_back(std::move(event)); }

    const std::vector<Event>& all() const { return _events; }
    /// Everything since the last call.
    std::vector<Event> take();
    std::size_t count(Event::Kind kind) const;

private:
    std::vector<Event> _events;
};

/// Those of one kind.
std::vector<Event> only(Event::Kind kind, const std::vector<Event>& events);

}  // namespace kit
