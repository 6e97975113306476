// SPDX-License-Identifier: MIT
#pragma once

#include <fstream>
#include <iterator>
#include <optional>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

/// Property lists together with what the platform's own reader and writer make of them.
namespace golden {

struct Case {
    std::string name;
    std::string verdict;  ///< "accepted", "accepted-unwritable" or "rejected"
    std::string root;     ///< the kind of the root object, or "-"
    std::string format;   ///< "xml", "binary" or "-"

    bool isRejected() const { return verdict == "rejected"; }
    bool isWritable() const { return verdict == "accepted"; }
};

inline std::string fileContent(const std::string& name) {
    std::ifstream file(TRIVEL3_GOLDEN_FOLDER "/" + name, std::ios::binary);
    if (!file) throw std::runtime_error("no golden file " + name);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline std::string input(const Case& golden) {
    return fileContent(golden.name + ".plist");
}

inline std::vector<Case> cases() {
    std::istringstream index(fileContent("index.tsv"));
    std::string line;
    std::getline(index, line);
    std::vector<Case> found;
    while (std::getline(index, line)) {
        std::istringstream fields(line);
        Case golden;
        std::getline(fields, golden.name, '\t');
        std::getline(fields, golden.verdict, '\t');
        std::getline(fields, golden.root, '\t');
        std::getline(fields, golden.format, '\t');
        found.push_back(golden);
    }
    return found;
}

}  // namespace golden
