// SPDX-License-Identifier: MIT
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <regex>
#include <string>
#include <vector>

#include "peers.h"
#include "tests/kit/distance.h"
#include "tests/kit/ssh_host.h"
#include "tests/kit/timing.h"

/// Measures what the programs take on a phone that is 50 ms of way there and back from here, behind a real SSH server,
/// and prints it in such ways: beside the same on a mount by sshfs over the same way, and beside what OpenSSH's `sftp`
/// takes for the bare transfers. Connecting is measured by itself, beside `ssh HOST true`.
namespace {

using namespace kit;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr std::chrono::microseconds oneWay{25'000};
constexpr double roundTrip = 50;
constexpr int repetitions = 5;
constexpr int applications = 150;  // beside those of the sample phone

double once(const std::function<void()>& action) {
    return Milliseconds(timeOf(action)).count();
}

double median(const std::function<double()>& measure) {
    std::vector<double> times;
    for (int run = 0; run < repetitions; ++run)
        times.push_back(measure());
    std::ranges::sort(times);
    return times[times.size() / 2];
}

void fill(const Phone& phone) {
    std::filesystem::copy(TRIVEL3_SAMPLE_PHONE, phone.folder, std::filesystem::copy_options::recursive);
    const std::filesystem::path icon = std::filesystem::path(phone.folder) / "Applications";
    std::string picture;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(icon)) {
        if (picture.empty() && entry.path().extension() == ".png") picture = readText(entry.path());
    }
    for (int number = 0; number < applications; ++number) {
        const std::string name = "Application" + std::to_string(number);
        const std::string folder = phone / ("var/mobile/Containers/Bundle/Application/" + name + "/" + name + ".app");
        writeText(folder + "/Info.plist",
                  settingsOf({{"CFBundleDisplayName", "<string>" + name + "</string>"},
                              {"CFBundleIconFile", "<string>Icon</string>"},
                              {"CFBundleIdentifier", "<string>example." + name + "</string>"}}));
        if (!picture.empty()) writeText(folder + "/Icon@2x.png", picture);
    }
}

/// `drive` at work on the far phone.
class Drive {
public:
    explicit Drive(const Trivel3ctl& program) : _program(program, {"drive"}) { tell("{\"do\":\"show\"}"); }

    /// How long the answer took.
    double tell(const std::string& command) {
        return once([&] {
            _program.send(command + "\n");
            static_cast<void>(_program.readLine());
        });
    }

private:
    RunningTrivel3ctl _program;
};

using Commands = std::vector<std::string>;

/// What one of the programs does.
struct Job {
    const char* what;
    std::function<double(const Trivel3ctl&)> once;  ///< in milliseconds, on the phone that the program is set to
    bool connects = false;                          ///< whether that takes connecting too
    int reach = 0;                                  ///< in ways there and back
    Commands bare = {};                             ///< what `sftp` does for it
};

Job runOf(const char* what, const Trivel3ctl::Arguments& arguments, const Commands& bare) {
    const auto run = [arguments](const Trivel3ctl& program) {
        return once([&] { static_cast<void>(program.run(arguments)); });
    };
    return {what, run, true, 4, bare};
}

Job driveOf(const char* what, const std::function<void()>& prepare, const std::vector<std::string>& before,
            const std::string& command, int reach, const Commands& bare) {
    const auto run = [=](const Trivel3ctl& program) {
        prepare();
        Drive drive(program);
        for (const std::string& each : before)
            drive.tell(each);
        return drive.tell(command);
    };
    return {what, run, false, reach, bare};
}

std::vector<Job> jobsOn(const SshHost& host) {
    const Commands reading = distance::readingOfSettings(host);
    const Commands change = distance::changeOfSettings(host);
    const std::string advanced = R"({"do":"tap","row":"Advanced Options"})";
    const std::string closing = R"({"do":"tap","row":"Close All Apps"})";
    const std::string opening = R"({"do":"switch","row":"Open to Last App","on":true})";
    const auto unrepaired = [&host] { writeSettings(host.phone(), settingsOf({{"HotCorners", "<true/>"}})); };
    // What the page finds nothing to mend in.
    const auto repaired = [&host] {
        writeSettings(host.phone(), settingsOf({{"MinimalControlCenterEnabled", "<false/>"},
                                                {"OpenToLastApp", "<false/>"},
                                                {"QuickSwitcher", "<false/>"}}));
    };
    const auto set = [unrepaired](const Trivel3ctl& program) {
        unrepaired();
        return once([&] { static_cast<void>(program.run({"set", "HotCorners", "false"})); });
    };
    return {
        runOf("get", {"get", "HotCorners"}, reading),
        runOf("list", {"list"}, reading),
        runOf("show", {"show"}, reading),
        {"set: on the phone and told", set, true, 12, change},
        driveOf("drive: Advanced Options, nothing to repair", repaired, {}, advanced, 4, reading),
        driveOf("drive: Advanced Options, repairs landed and told", unrepaired, {}, advanced, 12, change),
        driveOf("drive: a switch there, landed and told", repaired, {advanced}, opening, 12, change),
        driveOf("drive: Close All Apps, 163 applications, icons included", repaired, {advanced}, closing, 24, {}),
    };
}

std::string besidePeer(double ours, std::optional<double> peer) {
    if (!peer) return " | |";
    char text[64];
    std::snprintf(text, sizeof text, " %.0f | %.2f |", *peer, ours / *peer);
    return text;
}

void printHead(bool hasMount) {
    std::printf("| what | ms | ways | reach | holds | sftp, ms | to it |%s\n", hasMount ? " mount, ms | to it |" : "");
    std::printf("|---|--:|--:|--:|---|--:|--:|%s\n", hasMount ? "--:|--:|" : "");
}

void printConnecting(const char* what, double milliseconds) {
    std::printf("| %s | %.0f | %.1f |\n", what, milliseconds, milliseconds / roundTrip);
}

// The mount takes minutes.
void printNow(const std::string& text) {
    std::fputs(text.c_str(), stdout);
    std::fflush(stdout);
}

void printJob(const Job& job, double milliseconds) {
    const double ways = milliseconds / roundTrip;
    std::printf("| %s | %.0f | %.1f | %d | %s |", job.what, milliseconds, ways, job.reach,
                ways <= job.reach ? "yes" : "no");
}

double runSsh(const SshHost& host, std::uint16_t port) {
    const std::string command = host.ssh() + " -o BatchMode=yes -p " + std::to_string(port) + " 127.0.0.1 true";
    return once([&] { ChildProcess({"/bin/sh", "-c", command}).finish(); });
}

double connect(const SshHost& host, std::uint16_t port) {
    return once([&] { static_cast<void>(host.openPhone(host.address(port))->device().copyAnswer("ProductType")); });
}

// Of many in one connection, so that what connecting took matters little.
double bareTime(const SshHost& host, std::uint16_t port, const Commands& commands) {
    constexpr int times = 5;
    Commands all;
    for (int time = 0; time < times; ++time)
        all.insert(all.end(), commands.begin(), commands.end());
    return median([&] {
               const double connecting = once([&] { distance::runSftp(host, port, {"pwd"}); });
               return once([&] { distance::runSftp(host, port, all); }) - connecting;
           }) /
           times;
}

}  // namespace

/// The argument, where there is one, is a regular expression that picks jobs by what they are.
int main(int count, char** arguments) {
    const std::regex picked(count > 1 ? arguments[1] : "");
    const SshHost host;
    fill(host.phone());
    writeSettings(host.phone(), settingsOf({{"HotCorners", "<true/>"}}));
    const Distance way(host.port(), oneWay);
    Trivel3ctl program;
    host.letUse(program, way.port());
    std::optional<distance::MountedPhone> mount;
    Trivel3ctl onMount;
    if (whyNoMounts().empty()) onMount.usePhone(mount.emplace(host, way.port()).folder());
    printHead(mount.has_value());
    printConnecting("ssh HOST true", median([&] { return runSsh(host, way.port()); }));
    printConnecting("connecting, and asking for the model", median([&] { return connect(host, way.port()); }));
    std::map<Commands, double> bareTimes;
    for (const Job& job : jobsOn(host)) {
        if (!std::regex_search(job.what, picked)) continue;
        // Connecting right before, since a busy machine is not as busy all the time.
        const double ours = median([&] {
            const double connecting = job.connects ? connect(host, way.port()) : 0;
            return job.once(program) - connecting;
        });
        const auto [bare, isNew] = bareTimes.try_emplace(job.bare);
        if (isNew && !job.bare.empty()) bare->second = bareTime(host, way.port(), job.bare);
        printJob(job, ours);
        printNow(besidePeer(ours, job.bare.empty() ? std::nullopt : std::optional(bare->second)));
        if (mount) printNow(besidePeer(ours, job.once(onMount)));
        printNow("\n");
    }
    std::printf("\nMedians of %d%s.\n", repetitions,
                mount ? "; one run on the mount, which is connected before and tells the phone nothing"
                      : (", without a mount: " + whyNoMounts()).c_str());
}
