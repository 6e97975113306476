// SPDX-License-Identifier: MIT
#include "tests/kit/event.h"

#include <algorithm>
#include <iterator>
#include <ostream>
#include <string_view>
#include <utility>

namespace kit {
namespace {

struct Wording {
    std::string_view name;
    std::string_view whenSet;
    std::string_view whenNot;
};

Wording wordingOf(Event::Kind kind) {
    switch (kind) {
        case Event::Kind::write:
            return {"write", "", " (failed)"};
        case Event::Kind::notification:
            return {"notification", "", ""};
        case Event::Kind::reloadTable:
            return {"reload of the table", "", ""};
        case Event::Kind::reload:
            return {"reload", " (animated)", " (at once)"};
        case Event::Kind::insert:
            return {"insert", " (animated)", " (at once)"};
        case Event::Kind::remove:
            return {"remove", " (animated)", " (at once)"};
        case Event::Kind::push:
            return {"push", " (animated)", " (at once)"};
        case Event::Kind::pop:
            return {"pop", " (animated)", " (at once)"};
        case Event::Kind::openUrl:
            return {"open URL", "", " (failed)"};
        case Event::Kind::canOpenUrl:
            return {"can open URL", " (yes)", " (no)"};
        case Event::Kind::present:
            return {"present", " (animated)", " (at once)"};
        case Event::Kind::dismiss:
            return {"dismiss", " (animated)", " (at once)"};
    }
    return {};
}

}  // namespace

std::ostream& operator<<(std::ostream& stream, const Event& event) {
    const Wording wording = wordingOf(event.kind);
    stream << wording.name;
    for (const std::string& subject : event.subjects)
        stream << " \"" << subject << '"';
    if (event.position) stream << " at " << *event.position;
    if (event.flag) stream << (*event.flag ? wording.whenSet : wording.whenNot);
    return stream;
}

namespace event {

Event write(std::string path, bool worked) {
    return {Event::Kind::write, {std::move(path)}, {}, worked};
}

Event notification(std::string name) {
    return {Event::Kind::notification, {std::move(name)}};
}

Event reloadTable(std::string className) {
    return {Event::Kind::reloadTable, {std::move(className)}};
}

Event reload(std::string label, std::size_t position, bool animated) {
    return {Event::Kind::reload, {std::move(label)}, position, animated};
}

Event insert(std::vector<std::string> labels, std::size_t position, bool animated) {
    return {Event::Kind::insert, std::move(labels), position, animated};
}

Event remove(std::vector<std::string> labels, std::size_t position, bool animated) {
    return {Event::Kind::remove, std::move(labels), position, animated};
}

Event push(std::string className, bool animated) {
    return {Event::Kind::push, {std::move(className)}, {}, animated};
}

Event pop(std::string className, bool animated) {
    return {Event::Kind::pop, {std::move(className)}, {}, animated};
}

Event openUrl(std::string url, bool worked) {
    return {Event::Kind::openUrl, {std::move(url)}, {}, worked};
}

Event canOpenUrl(std::string url, bool answer) {
    return {Event::Kind::canOpenUrl, {std::move(url)}, {}, answer};
}

Event present(std::string className, bool animated) {
    return {Event::Kind::present, {std::move(className)}, {}, animated};
}

Event dismiss(bool animated) {
    return {Event::Kind::dismiss, {}, {}, animated};
}

}  // namespace event

std::vector<Event> EventLog::take() {
    return std::exchange(_events, {});
}

std::size_t EventLog::count(Event::Kind kind) const {
    return only(kind, _events).size();
}

std::vector<Event> only(Event::Kind kind, const std::vector<Event>& events) {
    std::vector<Event> wanted;
    std::ranges::copy_if(events, std::back_inserter(wanted), [kind](const Event& event) { return event.kind == kind; });
    return wanted;
}

}  // namespace kit
