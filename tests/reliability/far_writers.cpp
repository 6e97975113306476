// SPDX-License-Identifier: MIT
#include "far_writers.h"

#include <optional>
#include <stdexcept>
#include <utility>

#include "platform/foundation/property_list.h"
#include "tests/kit/phone.h"

namespace reliability_test {

using platform::Dictionary;
using platform::Value;

namespace {

std::string settingsWith(std::string_view held, const std::string& key, std::int64_t value) {
    const auto reading = platform::readPropertyList(held);
    Dictionary content = reading && reading.value->dictionary() ? *reading.value->dictionary() : Dictionary();
    content.set(key, value);
    return *platform::writeXmlPropertyList(Value(content)).bytes;
}

}  // namespace

OurFarWriter::OurFarWriter(const kit::SshHost& host, std::uint16_t port)
    : FarWriter(host), _phone(host.openPhone(host.address(port))) {}

void OurFarWriter::set(const std::string& key, std::int64_t value) {
    const auto change = [key, value](std::optional<std::string_view> held) -> platform::Result<platform::NewContent> {
        return platform::NewContent{settingsWith(held.value_or(""), key, value)};
    };
    const auto changed = _phone->files().changeFile(kit::settingsPath, change);
    if (!changed) countFailure(changed.error().text());
}

HandWriter::HandWriter(const kit::SshHost& host, std::uint16_t port)
    : FarWriter(host),
      _remote(host.phone().settingsFile()),
      _local(host.inside("by-hand")),
      _sftp({TEST_SFTP, "-q", "-F", host.writeConfiguration(), "-P", std::to_string(port), "-b", "-", "127.0.0.1"},
            kit::ownEnvironment()) {}

void HandWriter::set(const std::string& key, std::int64_t value) {
    carryOut("get " + _remote + " " + _local + "\n");
    kit::writeText(_local, settingsWith(kit::readText(_local), key, value));
    const std::string beside = _remote + ".by-hand";
    carryOut("put " + _local + " " + beside + "\nrename " + beside + " " + _remote + "\n");
}

// It says each command before it carries it out, and after the last one what it is told to.
void HandWriter::carryOut(const std::string& commands) {
    _sftp.send(commands + "!echo done\n");
    std::optional<std::string> line;
    while ((line = _sftp.readLine()) && *line != "done") {
    }
    if (!line) throw std::runtime_error{"sftp has ended: " + _sftp.finish().errors};
}

}  // namespace reliability_test
