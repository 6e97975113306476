// SPDX-License-Identifier: MIT
#include "hosts/session/completion.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string_view>
#include <utility>

#include "hosts/session/exit_status.h"
#include "hosts/session/printable.h"

namespace hosts {
namespace {

constexpr std::string_view completionRequest = "complete-words";
constexpr unsigned longestWait = 10;  // s

// What may stand in a place. The words come after what is typed already of the same word ("--device=").
struct Offer {
    const char* kind = "words";
    std::vector<Candidate> words = {};
    std::string_view prefix = {};
};

bool takesValue(const CLI::Option& option) {
    return option.get_items_expected_max() > 0;
}

std::string argumentName(const CLI::Option& option) {
    return "--" + option.get_lnames().front();
}

/// A positional argument; a null pointer for none. The second of arguments that come by twos bears the name of the
/// option's type.
struct Positional {
    const CLI::Option* option = nullptr;
    std::string name = {};
};

// The table keeps choices in the option's type alone: "NAME:{light,dark}".
std::vector<Candidate> choicesOf(const CLI::Option& option) {
    const std::string type = option.get_type_name();
    const std::size_t open = type.find('{');
    const std::size_t close = type.rfind('}');
    std::vector<Candidate> choices;
    if (open == std::string::npos || close == std::string::npos) return choices;
    for (std::string& name : CLI::detail::split(type.substr(open + 1, close - open - 1), ','))
        choices.push_back({std::move(name)});
    return choices;
}

// A command line, read word by word up to the one that is to be completed.
class TypedLine {
public:
    explicit TypedLine(const CLI::App& app) : _command(&app) {}

    void take(const std::string& word);
    Offer offerFor(std::string_view word, const ArgumentWords& argumentWords) const;

private:
    bool isOption(std::string_view word) const { return !_hasOptionsEnded && word.starts_with('-'); }
    const CLI::Option* optionNamed(std::string_view name) const;
    const CLI::App* subcommandNamed(const std::string& name) const;
    Positional positional() const;
    std::vector<Candidate> options() const;
    std::vector<Candidate> subcommands() const;
    Offer valuesOf(const CLI::Option& option, const std::string& name, std::string_view prefix,
                   const ArgumentWords& argumentWords) const;

    const CLI::App* _command;
    const CLI::Option* _awaited = nullptr;  // an option whose value the next word is
    std::size_t _positionals = 0;           // how many there were
    bool _hasOptionsEnded = false;
    GivenValues _given;
};

// Options of the program are taken after a subcommand too.
const CLI::Option* TypedLine::optionNamed(std::string_view name) const {
    for (const CLI::App* app = _command; app; app = app->get_parent()) {
        for (const CLI::Option* option : app->get_options())
            if (option->nonpositional() && option->check_name(std::string(name))) return option;
    }
    return nullptr;
}

const CLI::App* TypedLine::subcommandNamed(const std::string& name) const {
    const auto named = _command->get_subcommands([&](const CLI::App* each) { return each->get_name() == name; });
    return named.empty() ? nullptr : named.front();
}

// The positional argument that comes next.
Positional TypedLine::positional() const {
    std::size_t before = _positionals;
    for (const CLI::Option* option : _command->get_options()) {
        if (!option->get_positional()) continue;
        const auto most = std::size_t(option->get_items_expected_max());
        const bool isSecondOfTwo = option->get_type_size_max() == 2 && before % 2 == 1;
        if (before < most) return {option, isSecondOfTwo ? option->get_type_name() : option->get_name(true)};
        before -= most;
    }
    return {};
}

void TypedLine::take(const std::string& word) {
    if (_awaited) {
        _given[argumentName(*std::exchange(_awaited, nullptr))] = word;
    } else if (isOption(word)) {
        const std::size_t equals = word.find('=');
        const CLI::Option* option = optionNamed(std::string_view(word).substr(0, equals));
        if (word == "--") _hasOptionsEnded = true;
        if (!option || !takesValue(*option)) return;
        if (equals == std::string::npos)
            _awaited = option;
        else
            _given[argumentName(*option)] = word.substr(equals + 1);
    } else if (const CLI::App* subcommand = subcommandNamed(word)) {
        _command = subcommand;
    } else if (const Positional next = positional(); next.option) {
        _given[next.name] = word;
        ++_positionals;
    }
}

std::vector<Candidate> TypedLine::options() const {
    std::vector<Candidate> names;
    for (const CLI::App* app = _command; app; app = app->get_parent()) {
        for (const CLI::Option* option : app->get_options()) {
            if (!option->nonpositional()) continue;
            const std::string name = argumentName(*option);
            if (std::ranges::find(names, name, &Candidate::word) == names.end())
                names.push_back({name, option->get_description()});
        }
    }
    return names;
}

std::vector<Candidate> TypedLine::subcommands() const {
    std::vector<Candidate> names;
    for (const CLI::App* subcommand : _command->get_subcommands({}))
        names.push_back({subcommand->get_name(), subcommand->get_description()});
    return names;
}

Offer TypedLine::valuesOf(const CLI::Option& option, const std::string& name, std::string_view prefix,
                          const ArgumentWords& argumentWords) const {
    auto choices = choicesOf(option);
    if (!choices.empty()) return {.words = std::move(choices), .prefix = prefix};
    const std::string type = option.get_positional() ? name : option.get_type_name();
    if (type == "DIR" || type == "FOLDER" || (type == "WHERE" && !option.get_positional())) return {.kind = "folders"};
    if (type == "FILE" || type == "OUT") return {.kind = "files"};
    if (!argumentWords) return {};
    return {.words = argumentWords(name, _given), .prefix = prefix};
}

Offer TypedLine::offerFor(std::string_view word, const ArgumentWords& argumentWords) const {
    if (_awaited) return valuesOf(*_awaited, argumentName(*_awaited), {}, argumentWords);
    if (isOption(word)) {
        const std::size_t equals = word.find('=');
        const CLI::Option* option = optionNamed(word.substr(0, equals));
        if (equals == std::string_view::npos) return {.words = options()};
        if (!option || !takesValue(*option)) return {};
        return valuesOf(*option, argumentName(*option), word.substr(0, equals + 1), argumentWords);
    }
    if (auto names = subcommands(); !names.empty()) return {.words = std::move(names)};
    if (const Positional next = positional(); next.option) return valuesOf(*next.option, next.name, {}, argumentWords);
    return {.words = options()};
}

// A word that would steer a terminal cannot be typed either, and is left out.
std::string offerText(const Offer& offer) {
    std::string text = std::string(offer.kind) + "\n";
    for (const Candidate& each : offer.words) {
        if (printable(each.word) != each.word || each.word.empty()) continue;
        text.append(offer.prefix).append(each.word).append("\t").append(printable(each.description)).append("\n");
    }
    return text;
}

}  // namespace

bool asksForCompletion(int argumentCount, char** arguments) {
    return argumentCount > 2 && arguments[1] == completionRequest;
}

int completeWords(const CLI::App& app, int argumentCount, char** arguments, const ArgumentWords& argumentWords) {
    // A shell that waits takes no other keys. It has no use for a word on the reason.
    std::signal(SIGALRM, [](int) { std::_Exit(failed); });
    ::alarm(longestWait);
    const std::span words(arguments + 2, std::size_t(argumentCount) - 2);
    TypedLine line(app);
    for (const char* word : words.first(words.size() - 1))
        line.take(word);
    const std::string text = offerText(line.offerFor(words.back(), argumentWords));
    std::fwrite(text.data(), 1, text.size(), stdout);
    return done;
}

}  // namespace hosts
