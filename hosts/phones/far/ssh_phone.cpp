// SPDX-License-Identifier: MIT
#include "hosts/phones/far/ssh_phone.h"

#include <algorithm>
#include <chrono>

#include "hosts/phones/disk_usage.h"
#include "hosts/phones/far/far_events.h"

namespace hosts {
namespace {

using platform::Problem;
using platform::Result;
using platform::Value;

// Of the file system that the phone's root lies on. Nothing where the server does not tell.
std::optional<DiskBlocks> blocksByServer(SftpSession& session, const std::string& folder) {
    if (!session.offers(sftp::statvfs)) return std::nullopt;
    const auto reply = session.exchange(sftp::extendedOn(sftp::statvfs, folder));
    constexpr std::size_t fields = 11;
    const auto told = reply ? sftp::wideNumbersIn(*reply, fields) : std::vector<std::uint64_t>();
    if (told.empty()) return std::nullopt;
    return DiskBlocks{told[1], told[2], told[3], told[4]};
}

std::optional<DiskBlocks> blocksByCommand(SshConnection& connection) {
    const auto shell = connection.shell();
    if (!shell) return std::nullopt;
    const auto answer = (*shell)->run("LC_ALL=C df -k -P -- " + shellQuoted(connection.address().folder));
    return answer && answer->status == 0 ? readDiskFree(answer->output) : std::nullopt;
}

std::optional<Value> diskUsageOf(SshConnection& connection) {
    const auto session = connection.files();
    if (!session) return std::nullopt;
    auto blocks = blocksByServer(**session, connection.address().folder);
    if (!blocks) blocks = blocksByCommand(connection);
    return blocks ? std::optional(Value(diskUsage(*blocks))) : std::nullopt;
}

// Of a command that says one word, as "uname -m" does.
std::optional<Value> wordOf(SshConnection& connection, const std::string& command) {
    const auto shell = connection.shell();
    if (!shell) return std::nullopt;
    const auto answer = (*shell)->run(command);
    const bool isWord = answer && answer->status == 0 && !answer->output.empty() && answer->output.size() < 64 &&
                        std::ranges::all_of(answer->output, [](char byte) { return byte > ' ' && byte < 0x7F; });
    return isWord ? std::optional(Value(answer->output)) : std::nullopt;
}

}  // namespace

std::optional<Value> FarDevice::copyAnswer(std::string_view key) {
    const auto known = _answers.find(key);
    if (known != _answers.end()) return known->second;
    auto answer = _listed.copyAnswer(key);
    if (!answer) answer = asked(key);
    return _answers.insert_or_assign(std::string(key), std::move(answer)).first->second;
}

std::optional<Value> FarDevice::asked(std::string_view key) {
    if (key == "ProductType") {
        // A phone's is its model; that of another system, on which a phone's files may lie, is none.
        const auto machine = wordOf(_connection, "uname -m");
        return machine && machine->string()->find(',') != std::string::npos ? machine : std::nullopt;
    }
    if (key == "CPUArchitecture") return wordOf(_connection, "arch");
    return key == "DiskUsage" ? diskUsageOf(_connection) : std::nullopt;
}

Result<std::unique_ptr<Phone>> SshPhone::open(const SshAddress& address, const SshOptions& options,
                                              const std::string& busModule) {
    std::unique_ptr<SshPhone> phone(new SshPhone(address, options, busModule));
    const auto session = phone->_connection.files();
    if (!session) return session.error();
    const auto root = (*session)->exchange(sftp::onPath(sftp::Type::stat, address.folder));
    if (!root) return Problem{address.text(), "cannot open the phone", root.error().text()};
    if (root->type != sftp::Type::attrs)
        return Problem{address.text(), "cannot open the phone", address.folder + ": " + reasonOf(*root)};
    if (!root->attributes.isFolder())
        return Problem{address.text(), "cannot open the phone", address.folder + " is no folder there"};
    return std::unique_ptr<Phone>(std::move(phone));
}

SshPhone::SshPhone(const SshAddress& address, const SshOptions& options, const std::string& busModule)
    : _connection(address, options),
      _identity{address.text(), address.host, PhoneKind::ssh},
      _files(_connection, address.text()),
      _notifications(busModule, [this] { return _connection.shell(); },
                     {options.notify.empty() ? "notifyutil -p" : options.notify, !options.notify.empty()}),
      _device(_connection, _files) {}

void SshPhone::tell(PhoneListener* listener, bool tellsPassedOver) {
    _files.tell(listener, tellsPassedOver);
    _notifications.tell(listener);
}

PhonePromises SshPhone::promises() {
    PhonePromises promises;
    const auto session = _connection.files();
    if (!session) return promises;
    promises.replacesInOneStep = (*session)->offers(sftp::posixRename);
    promises.outlastsPowerLoss = (*session)->offers(sftp::fsync);
    promises.tellsChanges = _connection.options().notify.empty() && hasNotifyutil();
    promises.confinesLookUps = false;
    return promises;
}

bool SshPhone::hasNotifyutil() {
    const auto shell = _connection.shell();
    const auto answer = shell ? (*shell)->run("command -v notifyutil") : Result<WaitingShell::Answer>(Problem{});
    return answer && answer->status == 0;
}

std::optional<double> SshPhone::roundTrip() {
    const auto session = _connection.files();
    if (!session) return std::nullopt;
    const auto start = std::chrono::steady_clock::now();
    if (!(*session)->exchange(sftp::onPath(sftp::Type::stat, _connection.address().folder))) return std::nullopt;
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

// The phone's own identifier, where it tells one: another phone may come to have its address.
std::string SshPhone::mark() {
    const auto identifier = _device.copyAnswer("UniqueDeviceID");
    return identifier && identifier->string() ? *identifier->string() : std::string();
}

std::unique_ptr<PhoneEvents> SshPhone::observe(std::span<const std::string> paths, std::span<const std::string> names) {
    return std::make_unique<FarEvents>(_connection, _files, _notifications, paths, names);
}

}  // namespace hosts
