// SPDX-License-Identifier: MIT
#include "hosts/desktop/program/phone_opener.h"

#include <QCoreApplication>
#include <QProcess>
#include <QSettings>
#include <QWindow>
#include <algorithm>

#include "hosts/desktop/program/window_memory.h"

namespace hosts::desktop {
namespace {

const QString knownPhones = QStringLiteral("phones");
const QString folderEntry = QStringLiteral("folder");
const QString nameEntry = QStringLiteral("name");
constexpr std::size_t mostKnown = 8;

void add(QStringList& arguments, const char* option, const QString& value) {
    arguments << QString::fromLatin1(option) << value;
}

void addTaste(QStringList& arguments, const Options& options) {
    if (options.dark) add(arguments, "--appearance", *options.dark ? QStringLiteral("dark") : QStringLiteral("light"));
    if (options.highContrast)
        add(arguments, "--contrast", *options.highContrast ? QStringLiteral("high") : QStringLiteral("normal"));
    if (options.textScale) add(arguments, "--text-scale", QString::number(*options.textScale));
}

// How a phone is reached is no phone's own: another may be behind the same jump host.
void addReaching(QStringList& arguments, const SshOptions& ssh) {
    add(arguments, "--ssh", QString::fromStdString(ssh.command));
    if (!ssh.sftpServer.empty()) add(arguments, "--sftp-server", QString::fromStdString(ssh.sftpServer));
    if (!ssh.notify.empty()) add(arguments, "--notify", QString::fromStdString(ssh.notify));
}

}  // namespace

KnownPhone knownAs(OpenedPhone& opened) {
    const QString folder = opened.isSample ? QString() : QString::fromStdString(opened.phone->identity().place);
    return {folder, QString::fromStdString(nameOf(opened))};
}

void PhoneOpener::serve(Phones& phones, QWindow& window, OpenedPhone& current) {
    const KnownPhone shown = knownAs(current);
    if (!current.isSample && !current.isReport) remember(shown);
    connect(&_chooser, &FolderChooser::chosen, &phones, &Phones::openFolder);
    connect(&_chooser, &FolderChooser::unavailable, &phones, &Phones::askForName);
    const auto openPhone = [this](const QString& wanted) {
        const auto opened = open(wanted);
        return opened ? QString() : QString::fromStdString(opened.error().text());
    };
    phones.use(shown, {.openPhone = openPhone,
                       .chooseFolder = [this, &window] { _chooser.choose(window); },
                       .known = [this] { return known(); }});
}

// A folder is tried here first, where the user is; a connection takes its time, and is shown where it is waited for.
platform::Result<QStringList> PhoneOpener::argumentsFor(const QString& phone) const {
    QStringList arguments;
    PhoneOptions wanted;
    wanted.phone = phone.toStdString();
    if (namesSshAddress(wanted.phone)) {
        const auto address = parseSshAddress(wanted.phone);
        if (!address) return address.error();
        add(arguments, "--phone", QString::fromStdString(address->text()));
        addReaching(arguments, _options.ssh);
    } else {
        const auto opened = OpenedPhone::openPhoneOrReport(wanted, "trivel3-settings");
        if (!opened) return opened.error();
        add(arguments, "--phone", QString::fromStdString(opened->phone->identity().place));
        const std::string_view device = _options.device->name;
        // A support report has a shape of its own, as a phone has that tells its model.
        if (!opened->isReport) add(arguments, "--device", QString::fromUtf8(device.data(), qsizetype(device.size())));
    }
    addTaste(arguments, _options);
    return arguments;
}

platform::Result<platform::Done> PhoneOpener::open(const QString& phone) {
    const auto arguments = argumentsFor(phone);
    if (!arguments) return arguments.error();
    QProcess program;
    program.setProgram(QCoreApplication::applicationFilePath());
    program.setArguments(*arguments);
    // It is for no terminal, whoever has started this one: what it has to say it says in dialogs.
    program.setStandardErrorFile(QProcess::nullDevice());
    if (program.startDetached()) return platform::Done();
    return platform::Problem{.reason = "the program cannot be started again: " + program.errorString().toStdString()};
}

std::vector<KnownPhone> PhoneOpener::known() const {
    std::vector<KnownPhone> phones;
    QSettings settings = windowSettings();
    const int count = settings.beginReadArray(knownPhones);
    for (int i = 0; i < count; ++i) {
        settings.setArrayIndex(i);
        phones.push_back({settings.value(folderEntry).toString(), settings.value(nameEntry).toString()});
    }
    std::erase_if(phones, [](const KnownPhone& phone) { return phone.folder.isEmpty(); });
    return phones;
}

void PhoneOpener::remember(const KnownPhone& phone) const {
    std::vector<KnownPhone> phones = known();
    std::erase_if(phones, [&phone](const KnownPhone& each) { return each.folder == phone.folder; });
    phones.insert(phones.begin(), phone);
    phones.resize(std::min(phones.size(), mostKnown));
    QSettings settings = windowSettings();
    settings.beginWriteArray(knownPhones, static_cast<int>(phones.size()));
    for (int i = 0; i < static_cast<int>(phones.size()); ++i) {
        settings.setArrayIndex(i);
        settings.setValue(folderEntry, phones[static_cast<std::size_t>(i)].folder);
        settings.setValue(nameEntry, phones[static_cast<std::size_t>(i)].name);
    }
    settings.endArray();
}

}  // namespace hosts::desktop
