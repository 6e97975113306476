// SPDX-License-Identifier: MIT
// Look-ups step by step, for machines without openat2: they find what the kernel finds, and while somebody renames
// things under them they find nothing outside.
#include "hosts/phones/confined_walk.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <functional>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "hosts/phones/confined_open.h"
#include "tests/kit/forked.h"
#include "tests/kit/phone.h"
#include "tests/kit/watched_calls.h"

namespace {

namespace fs = std::filesystem;
using hosts::Descriptor;
using kit::Phone;
using kit::writeText;

Descriptor rootOf(const Phone& phone) {
    return Descriptor{::open(phone.folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)};
}

std::string contentOf(const Descriptor& file) {
    std::array<char, 100> bytes{};
    const ssize_t count = file.isOpen() ? ::read(file.get(), bytes.data(), bytes.size()) : -1;
    return count < 0 ? "(nothing)" : std::string{bytes.data(), static_cast<std::size_t>(count)};
}

/// While it lives, this process has no more rights than anybody, as far as it can give them up.
class Anybody {
public:
    Anybody() { become(501); }
    ~Anybody() { become(0); }
    Anybody(const Anybody&) = delete;
    Anybody& operator=(const Anybody&) = delete;

private:
    void become(uid_t user) const {
        if (_isRoot && ::seteuid(user) != 0) ADD_FAILURE() << "cannot become user " << user;
    }

    bool _isRoot = ::getuid() == 0;
};

/// A small phone of folders, files, links and a FIFO, and paths that may lead to them. The same seed gives the same.
class RandomPhone {
public:
    explicit RandomPhone(unsigned seed) : _random(seed) {
        fs::permissions(phone.around.path(), fs::perms{0755});
        fill(phone.folder, 3);
        fs::create_symlink(path(), phone / "l0");
        for (int link = 1; link <= 42; ++link)
            fs::create_symlink("l" + std::to_string(link - 1), phone / ("l" + std::to_string(link)));
        lockSome();
    }
    ~RandomPhone() {
        for (const std::string& folder : _locked)
            ::chmod(folder.c_str(), 0755);
    }

    std::string path() {
        std::string path = oneOf<std::string>({"/", "", "", "//"});
        const std::size_t steps = 1 + below(5);
        for (std::size_t step = 1; step <= steps; ++step)
            path += name() + (step < steps || below(5) == 0 ? oneOf<std::string>({"/", "/", "/", "//"}) : "");
        return path;
    }

    int flags() {
        return oneOf<int>({O_PATH, O_PATH | O_DIRECTORY, O_PATH | O_NOFOLLOW, O_PATH | O_NOFOLLOW | O_DIRECTORY,
                           O_RDONLY | O_NONBLOCK | O_NOCTTY, O_RDONLY | O_DIRECTORY, O_RDONLY | O_NONBLOCK | O_NOFOLLOW,
                           O_RDONLY | O_DIRECTORY | O_NOFOLLOW, O_WRONLY | O_NONBLOCK});
    }

    Phone phone;

private:
    std::size_t below(std::size_t bound) { return std::uniform_int_distribution<std::size_t>(0, bound - 1)(_random); }

    template <class T>
    T oneOf(const std::vector<T>& all) {
        return all[below(all.size())];
    }

    std::string name() {
        if (below(200) == 0) return std::string(300, 'x');
        if (below(40) == 0) return "l" + std::to_string(37 + below(6));
        return oneOf<std::string>({"a", "a", "b", "b", "c", "d", ".", "..", "..", "missing"});
    }

    void fill(const std::string& folder, int depth) {
        for (const char* name : {"a", "b", "c", "d"}) {
            const std::string entry = folder + "/" + name;
            const std::size_t kind = below(10);
            if (kind < 3) {
                fs::create_directory(entry);
                if (depth > 1) fill(entry, depth - 1);
            } else if (kind < 5) {
                writeText(entry, "file");
            } else if (kind < 9) {
                fs::create_symlink(path(), entry);
            } else if (below(4) == 0) {
                ::mkfifo(entry.c_str(), 0666);
                ::chmod(entry.c_str(), 0666);
            }
        }
    }

    void lockSome() {
        for (const auto& entry : fs::recursive_directory_iterator{phone.folder}) {
            if (entry.symlink_status().type() == fs::file_type::directory && below(6) == 0)
                _locked.push_back(entry.path());
        }
        for (const std::string& folder : _locked)
            ::chmod(folder.c_str(), oneOf<mode_t>({0, 0111, 0444, 0555}));
    }

    std::mt19937 _random;
    std::vector<std::string> _locked;
};

/// What an opening found: a file by its device and inode, or the error.
std::string outcomeOf(const Descriptor& file) {
    const int error = errno;
    struct stat status {};
    if (!file.isOpen()) return "error " + std::to_string(error);
    if (::fstat(file.get(), &status) != 0) return "(no status)";
    return "file " + std::to_string(status.st_dev) + ":" + std::to_string(status.st_ino);
}

// The kernel gives up where anything is renamed on the machine meanwhile, by another test say.
std::string openedByTheKernel(int root, const std::string& path, int flags) {
    auto& calls = hosts::FileCalls::system();
    int file = -1;
    do
        file = calls.openInRoot(root, path.c_str(), flags | O_CLOEXEC);
    while (file < 0 && errno == EAGAIN);
    return outcomeOf(Descriptor{file});
}

TEST(ConfinedWalk, findsWhatTheKernelFinds) {
    constexpr unsigned phones = 100;
    constexpr int paths = 500;
    const auto descriptors = kit::openDescriptors();
    std::map<std::string, int> outcomes;
    for (unsigned seed = 0; seed < phones; ++seed) {
        RandomPhone random{seed};
        const Descriptor root = rootOf(random.phone);
        const Anybody anybody;
        for (int i = 0; i < paths; ++i) {
            const std::string path = random.path();
            const int flags = random.flags();
            std::string expected = openedByTheKernel(root.get(), path, flags);
            if (expected == "error " + std::to_string(ENOSYS)) GTEST_SKIP() << "this kernel finds nothing by itself";
            const std::string found =
                outcomeOf(hosts::walkConfined(hosts::FileCalls::system(), root.get(), path, flags));
            // A look-up that the kernel starts over, since something was renamed, counts its links once more.
            for (int asked = 0; asked < 100 && found != expected; ++asked)
                expected = openedByTheKernel(root.get(), path, flags);
            ASSERT_EQ(found, expected) << "seed " << seed << ": " << path << ", flags " << flags;
            ++outcomes[expected.starts_with("file") ? "file" : expected];
        }
    }
    EXPECT_EQ(kit::openDescriptors(), descriptors);
    EXPECT_GT(outcomes["file"], 1000);
    for (const int error : {ENOENT, ENOTDIR, ELOOP, EACCES, EISDIR, ENXIO, ENAMETOOLONG})
        EXPECT_GT(outcomes["error " + std::to_string(error)], 10) << error;
}

TEST(ConfinedWalk, ofAnEmptyPathLeadsNowhere) {
    const Phone phone;
    const Descriptor root = rootOf(phone);
    EXPECT_FALSE(hosts::walkConfined(hosts::FileCalls::system(), root.get(), "", O_PATH).isOpen());
    EXPECT_EQ(errno, ENOENT);
}

// What the entry "file" becomes right before it is opened, having been a file when it was looked at.
struct Change {
    std::string name;
    std::function<void(const Phone&)> make;
    std::string found;
};

class ConfinedWalkOfAChangingPhone : public testing::TestWithParam<Change> {};

TEST_P(ConfinedWalkOfAChangingPhone, opensOnlyWhatLiesInside) {
    const Phone phone;
    writeText(phone.around / "outside/secret", "secret");
    writeText(phone / "file", "old");
    writeText(phone / "other", "other");
    const Descriptor root = rootOf(phone);
    bool isLookedAt = false;
    kit::WatchedCalls calls{[&](const std::string& call, std::size_t) {
        if (isLookedAt && call == "inspect") {
            fs::remove(phone / "file");
            GetParam().make(phone);
            isLookedAt = false;
        }
        isLookedAt = isLookedAt || (call == "status" && fs::is_regular_file(fs::symlink_status(phone / "file")));
        return 0;
    }};
    EXPECT_EQ(contentOf(hosts::walkConfined(calls, root.get(), "/file", O_RDONLY | O_NONBLOCK)), GetParam().found);
}

INSTANTIATE_TEST_SUITE_P(
    BecomesA, ConfinedWalkOfAChangingPhone,
    testing::Values(
        Change{"linkOut", [](const Phone& phone) { fs::create_symlink("../outside/secret", phone / "file"); },
               "(nothing)"},
        Change{"linkOutFromTheRoot",
               [](const Phone& phone) { fs::create_symlink(phone.around / "outside/secret", phone / "file"); },
               "(nothing)"},
        Change{"linkInside", [](const Phone& phone) { fs::create_symlink("/other", phone / "file"); }, "other"},
        Change{"folder", [](const Phone& phone) { fs::create_directory(phone / "file"); }, "(nothing)"},
        Change{"file", [](const Phone& phone) { writeText(phone / "file", "new"); }, "new"}),
    [](const testing::TestParamInfo<Change>& change) { return change.param.name; });

TEST(ConfinedWalk, givesUpOnALinkThatIsAFileWheneverItIsLookedAt) {
    const Phone phone;
    writeText(phone.around / "outside/secret", "secret");
    fs::create_symlink("../outside/secret", phone / "link");
    const Descriptor root = rootOf(phone);
    struct Calls final : hosts::FileCalls {
        int status(int, struct stat& status) override {
            status.st_mode = S_IFREG;
            return 0;
        }
    } calls;
    EXPECT_FALSE(hosts::walkConfined(calls, root.get(), "/link", O_RDONLY).isOpen());
    EXPECT_EQ(errno, ELOOP);
}

// Until it is told to stop, another process lets things inside and links out of the phone change places, and a folder
// leave the phone and come back.
int swapUntil(const Phone& phone, kit::SharedCounter& over) {
    const auto exchange = [&](const char* one, const char* other) {
        return ::renameat2(AT_FDCWD, (phone / one).c_str(), AT_FDCWD, (phone / other).c_str(), RENAME_EXCHANGE);
    };
    const std::string inside = phone / "deep/folder";
    const std::string outside = phone.around / "left";
    while (*over == 0) {
        if (exchange("folder", "link-out") != 0 || exchange("file", "absolute-link-out") != 0) return 1;
        if (::rename(inside.c_str(), outside.c_str()) != 0 || ::rename(outside.c_str(), inside.c_str()) != 0) return 2;
    }
    return 0;
}

TEST(ConfinedWalk, leadsNowhereOutsideWhileLinksOutTakeTurnsWithWhatIsInside) {
    constexpr int rounds = 5000;
    const Phone phone;
    writeText(phone.around / "outside/secret", "secret");
    writeText(phone / "folder/secret", "inside");
    writeText(phone / "file", "inside");
    writeText(phone / "deep/folder/file", "inside");
    fs::create_symlink("../outside", phone / "link-out");
    fs::create_symlink(phone.around / "outside/secret", phone / "absolute-link-out");
    const Descriptor root = rootOf(phone);
    kit::SharedCounter over;
    const pid_t swapping = kit::startForked([&] { return swapUntil(phone, over); });
    int outside = 0;
    for (int round = 0; round < rounds; ++round) {
        for (const char* path : {"/folder/secret", "/link-out/secret", "/file", "/absolute-link-out",
                                 "/deep/folder/../../outside/secret", "/deep/folder/../../../outside/secret"}) {
            const Descriptor file =
                hosts::walkConfined(hosts::FileCalls::system(), root.get(), path, O_RDONLY | O_NONBLOCK);
            if (contentOf(file) == "secret") ++outside;
        }
    }
    *over = 1;
    EXPECT_EQ(kit::waitForChild(swapping), 0);
    EXPECT_EQ(outside, 0);
}

}  // namespace
