// SPDX-License-Identifier: MIT
#include "hosts/system/new_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include "hosts/system/error_text.h"
#include "platform/foundation/utf8.h"

namespace hosts {

namespace {

namespace fs = std::filesystem;
using platform::Problem;

constexpr mode_t privateFile = 0600;
constexpr int mostNumbers = 10000;
constexpr std::size_t longestName = 200;

std::string numbered(const std::string& stem, int number, const std::string& extension) {
    return (number == 1 ? stem : stem + " (" + std::to_string(number) + ")") + extension;
}

}  // namespace

bool makePrivateFolders(const fs::path& folder, std::error_code& failure) {
    if (fs::is_directory(folder, failure)) return true;
    if (folder.has_relative_path() && !makePrivateFolders(folder.parent_path(), failure)) return false;
    if (fs::create_directory(folder, failure)) fs::permissions(folder, fs::perms::owner_all, failure);
    return !failure;
}

platform::Result<NewFile> NewFile::create(const std::string& folder, const std::string& stem,
                                          const std::string& extension) {
    std::error_code failure;
    if (!makePrivateFolders(folder, failure)) return Problem{folder, "cannot make the folder", failure.message()};
    for (int number = 1; number <= mostNumbers; ++number) {
        std::string path = fs::path{folder} / numbered(stem, number, extension);
        Descriptor file{::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, privateFile)};
        if (file.isOpen()) return NewFile{std::move(file), std::move(path)};
        if (errno != EEXIST) break;
    }
    return Problem{folder, "cannot make a file in", errorText(errno)};
}

NewFile::~NewFile() {
    if (_file.isOpen()) ::unlink(_path.c_str());
}

platform::Result<platform::Done> NewFile::write(std::string_view contents) {
    while (!contents.empty()) {
        const ssize_t written = uninterrupted([&] { return ::write(_file.get(), contents.data(), contents.size()); });
        if (written < 0) return Problem{_path, "cannot write", errorText(errno)};
        contents.remove_prefix(static_cast<std::size_t>(written));
    }
    return platform::Done();
}

platform::Result<platform::Done> NewFile::keep() {
    if (::fsync(_file.get()) != 0) return Problem{_path, "cannot write", errorText(errno)};
    _file = Descriptor{};
    return platform::Done();
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
        while (end > 0 && platform::isUtf8Continuation(name[end]))
            --end;
        name.resize(end);
    }
    return name.empty() ? std::string{otherwise} : name;
}

}  // namespace hosts
