// SPDX-License-Identifier: MIT
#include "traced_set.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <fstream>
#include <map>
#include <stdexcept>

namespace reliability_test {

using namespace kit;

namespace {

// All that a write is made of. Calls that a kind of machine does not have are marked for the tracer.
constexpr const char* tracedCalls =
    "trace=openat2,openat,?newfstatat,statx,readlinkat,getdents64,getrandom,flock,read,write,fchmod,fchown,"
    "flistxattr,fgetxattr,fsetxattr,fsync,?renameat,?renameat2,mkdirat,unlinkat,close";

bool isOneOfTheLastOf(const std::vector<TracedCall>& calls, std::size_t at) {
    return calls[at].name == "fsync" || (at > 0 && calls[at].name == "close" && isOneOfTheLastOf(calls, at - 1));
}

}  // namespace

TracedSet::TracedSet(const Phone& phone) : _log(_ctl.folder() / "trace") {
    _ctl.usePhone(phone.folder);
    // A traced program cannot look for its leaks.
    const char* usual = std::getenv("ASAN_OPTIONS");
    _ctl.set("ASAN_OPTIONS", std::string(usual ? usual : "") + ":detect_leaks=0");
}

std::string TracedSet::whyNot() {
    Trivel3ctl ctl;
    const Outcome outcome = ChildProcess({TEST_STRACE, "-o", "/dev/null", "/bin/true"}, ctl.environment()).finish();
    return outcome.status == 0 ? "" : "no program can be traced here: " + outcome.errors;
}

Outcome TracedSet::run(const std::string& injection) {
    Trivel3ctl::Arguments tracer{TEST_STRACE, "-o", _log, "-e", "signal=none", "-e", tracedCalls};
    if (!injection.empty()) tracer.insert(tracer.end(), {"-e", "inject=" + injection});
    _ctl.runThrough(tracer);
    return _ctl.run({"set", "HotCorners", "off"});
}

std::vector<TracedCall> TracedSet::traced() const {
    std::vector<TracedCall> calls;
    std::map<std::string, std::size_t> count;
    std::ifstream log(_log);
    for (std::string line; std::getline(log, line);) {
        const std::string name = line.substr(0, line.find('('));
        if (std::isalpha(static_cast<unsigned char>(line.front())))
            calls.push_back({name, ++count[name], calls.size(), line});
    }
    return calls;
}

std::vector<TracedCall> TracedSet::callsOfTheWrite() {
    const Outcome outcome = run("");
    if (outcome.status != 0) throw std::runtime_error{outcome.errors};
    auto calls = traced();
    const auto opensFolder = [](const TracedCall& call) {
        return call.name == "openat2" && call.line.find("O_DIRECTORY") != std::string::npos &&
               call.line.find("Preferences\"") != std::string::npos;
    };
    calls.erase(calls.begin(), std::ranges::find_if(calls, opensFolder));
    std::size_t end = calls.size();
    while (end > 0 && !isOneOfTheLastOf(calls, end - 1))
        --end;
    calls.resize(end);
    return calls;
}

Outcome TracedSet::runWithError(const TracedCall& call, const std::string& error) {
    return run(call.name + ":error=" + error + ":when=" + std::to_string(call.ofItsName));
}

Outcome TracedSet::runAndKill(const TracedCall& call) {
    return run(call.name + ":signal=SIGKILL:when=" + std::to_string(call.ofItsName));
}

std::vector<std::size_t> TracedSet::disturbedAt() const {
    std::vector<std::size_t> positions;
    for (const TracedCall& call : traced()) {
        if (call.line.ends_with("(INJECTED)") || call.line.ends_with("= ?")) positions.push_back(call.position);
    }
    return positions;
}

}  // namespace reliability_test
