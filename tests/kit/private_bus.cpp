// SPDX-License-Identifier: MIT
#include "tests/kit/private_bus.h"

#include <signal.h>
#include <stdlib.h>

#include <stdexcept>

namespace kit {

namespace {

constexpr const char* busVariable = "DBUS_SESSION_BUS_ADDRESS";

std::string configurationFor(const std::string& address) {
    return "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\"\n"
           " \"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n"
           "<busconfig>\n"
           "  <type>session</type>\n"
           "  <listen>" +
           address +
           "</listen>\n"
           "  <auth>EXTERNAL</auth>\n"
           "  <policy context=\"default\">\n"
           "    <allow send_destination=\"*\" eavesdrop=\"true\"/>\n"
           "    <allow eavesdrop=\"true\"/>\n"
           "    <allow own=\"*\"/>\n"
           "  </policy>\n"
           "</busconfig>\n";
}

}  // namespace

PrivateBus::PrivateBus() {
    writeText(_folder / "bus.conf", configurationFor(address()));
    restart();
}

void PrivateBus::stop() {
    _daemon->signal(SIGTERM);
    _daemon->wait();
    _daemon.reset();
}

void PrivateBus::restart() {
    _daemon.emplace(std::vector<std::string>{TEST_DBUS_DAEMON, "--config-file=" + (_folder / "bus.conf"), "--nofork",
                                             "--nopidfile", "--print-address=1"});
    if (!_daemon->readLine()) throw std::runtime_error{"the bus does not start"};
}

SessionBusAddress::SessionBusAddress(const std::string& address) {
    ::setenv(busVariable, address.c_str(), 1);
}

SessionBusAddress::~SessionBusAddress() {
    ::unsetenv(busVariable);
}

}  // namespace kit
