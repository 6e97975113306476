// SPDX-License-Identifier: MIT
#include "hosts/hand_over/new_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "hosts/system/error_text.h"
#include "hosts/system/private_folders.h"

namespace hosts {

namespace {

constexpr mode_t privateFile = 0600;
constexpr int mostNumbers = 10000;
constexpr std::size_t longestName = 200;

std::string numbered(const std::string& stem, int number, const std::string& extension) {
    return (number == 1 ? stem : stem + " (" + std::to_string(number) + ")") + extension;
}

bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

}  // namespace

std::optional<NewFile> NewFile::create(const std::string& folder, const std::string& stem, const std::string& extension,
                                       std::string& error) {
    std::error_code failure;
    if (!makePrivateFolders(folder, failure)) {
        error = "cannot make the folder " + folder + ": " + failure.message();
        return std::nullopt;
    }
    for (int number = 1; number <= mostNumbers; ++number) {
        std::string path = (std::filesystem::path{folder} / numbered(stem, number, extension)).string();
        Descriptor file{::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, privateFile)};
        if (file.isOpen()) return NewFile{std::move(file), std::move(path)};
        if (errno != EEXIST) break;
    }
    error = "cannot make a file in " + folder + ": " + errorText(errno);
    return std::nullopt;
}

NewFile::~NewFile() {
    if (_file.isOpen()) ::unlink(_path.c_str());
}

bool NewFile::write(std::string_view contents, std::string& error) {
    while (!contents.empty()) {
        const ssize_t written = ::write(_file.get(), contents.data(), contents.size());
        if (written >= 0) {
            contents.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno != EINTR) {
            error = "cannot write " + _path + ": " + errorText(errno);
            return false;
        }
    }
    return true;
}

bool NewFile::keep(std::string& error) {
    if (::fsync(_file.get()) != 0) {
        error = "cannot write " + _path + ": " + errorText(errno);
        return false;
    }
    _file = Descriptor{};
    return true;
}

std::string fileNameFrom(std::string_view text, std::string_view otherwise) {
    std::string name;
    for (const char letter : text) {
        const bool unfit = letter == '/' || static_cast<unsigned char>(letter) < ' ' || letter == '\x7F';
        name += unfit ? '-' : letter;
    }
    name.erase(0, name.find_first_not_of(". "));
    if (name.size() > longestName) {
        std::size_t end = longestName;
        while (end > 0 && isContinuation(name[end]))
            --end;
        name.resize(end);
    }
    return name.empty() ? std::string{otherwise} : name;
}

}  // namespace hosts
