// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace CLI {
class App;
}

/// What the shells' completion asks the programs, so that there is one table of their options.
namespace hosts {

/// A word that may stand in a place of a command line, and what it stands for; both may hold any bytes.
struct Candidate {
    std::string word;
    std::string description = {};
};

/// What stands on the command line ahead of the word that is to be completed: values by the names of their options
/// ("--phone") and positional arguments ("KEY"), the last of each.
using GivenValues = std::map<std::string, std::string>;

/// The words that an argument, named as in `GivenValues`, may be. Those whose words are choices, files or folders are
/// not asked for.
using ArgumentWords = std::function<std::vector<Candidate>(const std::string& argument, const GivenValues& given)>;

/// Whether the program was called as "PROGRAM complete-words WORD…": no user does.
bool asksForCompletion(int argumentCount, char** arguments);

/// Prints what may stand in place of the last WORD after the others, which are the program's arguments without the
/// shell's quotes. The first line is "words", "files" or "folders", and the shell's own completion answers to the
/// latter two. After "words", each line is a whole word and, after a tab, what it stands for. Nothing that is printed
/// can steer a terminal. A phone that does not answer ends the program after a while. Gives its exit status.
int completeWords(const CLI::App& app, int argumentCount, char** arguments, const ArgumentWords& argumentWords);

}  // namespace hosts
