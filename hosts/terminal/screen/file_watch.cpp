// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/file_watch.h"

#include <fcntl.h>

#include <utility>

#include "hosts/phones/confined_open.h"

namespace hosts::terminal::screen {

bool FileWatch::State::operator==(const State& other) const {
    return device == other.device && number == other.number && size == other.size &&
           changed.tv_sec == other.changed.tv_sec && changed.tv_nsec == other.changed.tv_nsec;
}

FileWatch::FileWatch(const std::string& folder, std::vector<std::string> paths)
    : _root(::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)), _paths(std::move(paths)), _states(states()) {}

bool FileWatch::takeChange() {
    auto now = states();
    return std::exchange(_states, now) != now;
}

std::vector<std::optional<FileWatch::State>> FileWatch::states() const {
    std::vector<std::optional<State>> all;
    for (const std::string& path : _paths)
        all.push_back(stateOf(path));
    return all;
}

std::optional<FileWatch::State> FileWatch::stateOf(const std::string& path) const {
    const Descriptor file = openConfined(FileCalls::system(), _root.get(), path, O_PATH);
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0) return std::nullopt;
    return State{status.st_dev, status.st_ino, status.st_size, status.st_mtim};
}

}  // namespace hosts::terminal::screen
