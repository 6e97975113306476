// SPDX-License-Identifier: MIT
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "hosts/phones/far/ssh_phone.h"
#include "tests/kit/distance.h"
#include "tests/kit/ssh_host.h"
#include "tests/kit/timing.h"

/// Measures what the programs take on a phone that is 50 ms of way there and back from here, behind a real SSH server,
/// and prints it in such ways. Connecting is measured by itself, beside `ssh HOST true`.
namespace {

using namespace kit;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr std::chrono::microseconds oneWay{25'000};
constexpr double roundTrip = 50;
constexpr int repetitions = 5;
constexpr int applications = 150;  // beside those of the sample phone

double median(const std::function<void()>& action) {
    std::vector<double> times;
    for (int run = 0; run < repetitions; ++run)
        times.push_back(Milliseconds(timeOf(action)).count());
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

void row(const char* what, double milliseconds, int reach) {
    std::printf("| %-62s | %6.0f | %5.1f | %s |\n", what, milliseconds, milliseconds / roundTrip,
                reach > 0 ? std::to_string(reach).c_str() : "");
}

/// `drive` at work on the far phone.
class Drive {
public:
    explicit Drive(const Trivel3ctl& program) : _program(program, {"drive"}) { tell("{\"do\":\"show\"}"); }

    /// How long the answer took.
    double tell(const std::string& command) {
        const auto time = timeOf([&] {
            _program.send(command + "\n");
            static_cast<void>(_program.readLine());
        });
        return Milliseconds(time).count();
    }

private:
    RunningTrivel3ctl _program;
};

double medianOfDrives(const Trivel3ctl& program, const std::vector<std::string>& before, const std::string& command,
                      const std::function<void()>& prepare) {
    std::vector<double> times;
    for (int run = 0; run < repetitions; ++run) {
        prepare();
        Drive drive(program);
        for (const std::string& each : before)
            drive.tell(each);
        times.push_back(drive.tell(command));
    }
    std::ranges::sort(times);
    return times[times.size() / 2];
}

}  // namespace

int main() {
    const SshHost host;
    fill(host.phone());
    const Distance way(host.port(), oneWay);
    Trivel3ctl program;
    host.letUse(program, way.port());

    const std::string bare = host.ssh() + " -o BatchMode=yes -p " + std::to_string(way.port()) + " 127.0.0.1 true";
    const double ssh = median([&] { ChildProcess({"/bin/sh", "-c", bare}).finish(); });
    const auto address = hosts::parseSshAddress(host.address(way.port()));
    hosts::SshOptions options;
    options.command = host.ssh();
    const double connecting = median([&] {
        const auto phone = hosts::SshPhone::open(*address, options, "/none");
        static_cast<void>((*phone)->device().copyAnswer("ProductType"));
    });
    std::printf("| %-62s | ms     | ways  | reach |\n|---|--:|--:|--:|\n", "what");
    row("ssh HOST true", ssh, 0);
    row("connecting, and asking for the model", connecting, 0);
    const auto command = [&](const char* what, const Trivel3ctl::Arguments& arguments, int reach) {
        row(what, median([&] { static_cast<void>(program.run(arguments)); }) - connecting, reach);
    };
    command("get", {"get", "HotCorners"}, 4);
    command("list", {"list"}, 4);
    command("show", {"show"}, 4);
    int on = 0;
    row("set: on the phone and told",
        median([&] {
            static_cast<void>(program.run({"set", "HotCorners", std::to_string(++on % 2)}));
        }) - connecting,
        12);

    const std::string advanced = R"({"do":"tap","row":"Advanced Options"})";
    const std::string closing = R"({"do":"tap","row":"Close All Apps"})";
    const auto unrepaired = [&] { writeSettings(host.phone(), settingsOf({{"HotCorners", "<true/>"}})); };
    // What the page finds nothing to mend in.
    const auto repaired = [&] {
        writeSettings(host.phone(), settingsOf({{"MinimalControlCenterEnabled", "<false/>"},
                                                {"OpenToLastApp", "<false/>"},
                                                {"QuickSwitcher", "<false/>"}}));
    };
    row("drive: Advanced Options, nothing to repair", medianOfDrives(program, {}, advanced, repaired), 4);
    row("drive: Advanced Options, repairs landed and told", medianOfDrives(program, {}, advanced, unrepaired), 12);
    row("drive: a switch there, landed and told",
        medianOfDrives(program, {advanced}, R"({"do":"switch","row":"Open to Last App","on":true})", repaired), 12);
    row("drive: Close All Apps, 163 applications, icons included",
        medianOfDrives(program, {advanced}, closing, repaired), 24);
}
